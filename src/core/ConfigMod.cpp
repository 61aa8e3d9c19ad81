// The two transfer styles: numbered blocks, and one image.
#include "core/ConfigMod.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "app/App.h"
#include "core/Convert.h"
#include "core/DownloadProgress.h"
#include "link/BuildFrame.h"
#include "link/Conversation.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

constexpr int ReadInterval = 3000;  // ms

void OpenExchange(Conversation& conversation, Exchange::Kind kind, Exchange::Unit unit = Exchange::Unit::Byte,
                  std::size_t total = 0) {
  conversation.exchange.Begin(kind, unit, static_cast<int>(total));
  conversation.CommOpen();
  SetDeviceLink(conversation);
}

/// Tells the user how it has ended.
void EndExchange(Conversation& conversation, bool done) {
  if (done) {
    conversation.exchange.End(true);
  } else {
    TellTimeOut(conversation);
  }
}

/// The block numbers of a BlockList, whose element 0 counts them.
std::span<const std::int16_t> BlocksOf(const std::vector<std::int16_t>& list) {
  return list.empty() ? std::span<const std::int16_t>() : std::span(list).subspan(1, static_cast<std::size_t>(list[0]));
}

void SelectBlock(Globals& globals, std::int16_t block, std::int16_t length) {
  globals.BlockAddressExt = 0;
  globals.BlockNumber = block;
  globals.BlockLength = length;
  globals.BlockData = globals.BlockTable[static_cast<std::size_t>(block)];
}

DownloadProgress* ProgressMessage(App& app, bool load) {
  Form* form = load ? &app.forms.Load(DownloadProgress::FormName) : app.forms.Find(DownloadProgress::FormName);
  return dynamic_cast<DownloadProgress*>(form);
}

/// False after one time-out; no end of exchange is sent then.
bool WriteBlocks(Conversation& conversation) {
  Globals& globals = conversation.app.globals;
  const auto blocks = BlocksOf(conversation.blockList);
  OpenExchange(conversation, Exchange::Kind::Writing, Exchange::Unit::Block, blocks.size());
  conversation.CommFlush();
  for (const std::int16_t block : blocks) {
    conversation.exchange.Next("block " + Str(block));
    SelectBlock(globals, block, CInt(static_cast<double>(globals.BlockTable[static_cast<std::size_t>(block)].size())));
    if (!SendAndWaitForAck(conversation, BuildFrame(globals, conversation.product, BlockFrame::Write))) return false;
    conversation.exchange.Advance(1);
  }
  conversation.exchange.Next("the end of the blocks");
  // The device stores the blocks now: without it nothing has changed.
  return SendLast(conversation, EndOfExchange);
}

/// Reads the reply of BlockNumber into `reply`. False on a time-out or a wrong checksum.
bool ReadBlock(Conversation& conversation, Bytes& reply) {
  const Bytes request = BuildFrame(conversation.app.globals, conversation.product, BlockFrame::Read);
  if (!SendAndWaitForAck(conversation, request)) return false;
  const std::int32_t n = ReadBytes(conversation, reply, BlockFrame::ReplyLength);
  if (n < 0) return false;
  const bool good = n == 0 || Mid(reply, n, 1) == Checksum8(reply, n - 1);
  if (!good) conversation.exchange.Refuse("the reply's checksum is wrong");
  return good;
}

/// What the user does on the pages meanwhile must not get between the blocks: they are decoded behind the last wait,
/// with those that came before a failure.
Taken ReadBlocks(Conversation& conversation, ConfigurationForm& form) {
  Globals& globals = conversation.app.globals;
  std::vector<std::pair<std::int16_t, Bytes>> replies;
  bool good = true;
  const auto blocks = BlocksOf(conversation.blockList);
  OpenExchange(conversation, Exchange::Kind::Reading, Exchange::Unit::Block, blocks.size());
  for (const std::int16_t block : blocks) {
    Bytes reply;
    conversation.exchange.Next("the request of block " + Str(block));
    SelectBlock(globals, block, BlockFrame::ReadLength);
    good = ReadBlock(conversation, reply);
    if (!good) break;
    replies.emplace_back(block, reply);
    conversation.exchange.Advance(1);
  }
  if (good) Send(conversation, EndOfExchange);
  if (conversation.IsOver()) return Taken::Nothing;
  for (const auto& [block, reply] : replies) {
    globals.BlockNumber = block;
    form.RemoveData(reply);
  }
  if (good) return Taken::All;
  return replies.empty() ? Taken::Nothing : Taken::Part;
}

/// The part of an image upload behind "TR" and the length: the image, without its header and checksum.
Bytes ReadImage(Conversation& conversation, std::int32_t total, std::int32_t headerLength) {
  Bytes header, data;
  SetTimeOut(conversation, ReadInterval);
  ReadBytes(conversation, header, headerLength);
  SetTimeOut(conversation, ReadInterval);
  ReadBytes(conversation, data, total - headerLength);
  const int came = conversation.exchange.Done();
  if (came < total) {
    conversation.exchange.Refuse(Str(came) + " of " + Str(total) + " bytes came");
  }
  Send(conversation, Bytes(1, Ack));
  data.resize(data.size() < 2 ? 0 : data.size() - 2);
  return data;
}

/// `length`: of the whole image, as the device announced it.
Taken TakeImage(Conversation& conversation, const Bytes& data, std::size_t length, ConfigurationForm& form) {
  Globals& globals = conversation.app.globals;
  if (data.size() / 2 > globals.RegisterHigh.size()) {
    // Not this product.
    conversation.exchange.Refuse("the reply is longer than any configuration of the " + conversation.product);
    TellTimeOut(conversation);
    return Taken::Nothing;
  }
  conversation.exchange.End(conversation.exchange.IsGood());
  globals.LoadRegisters(data, 0);
  form.Parameter_Setup_RB();
  if (data.size() >= length) return Taken::All;
  return data.size() < 2 ? Taken::Nothing : Taken::Part;
}

}  // namespace

bool DownloadImage(Conversation& conversation) {
  App& app = conversation.app;
  const int registers = static_cast<int>(app.globals.ConfigImage.size()) / 2;
  const int allowed = CLng((registers * 0.1 + 5) * 1000);  // ms
  const Bytes frame = BuildFrame(app.globals, conversation.product, ImageFrame::Code);
  SetTimeOut(conversation, allowed);
  OpenExchange(conversation, Exchange::Kind::Writing, Exchange::Unit::Byte, frame.size());
  conversation.exchange.Next("the configuration");
  conversation.CommFlush();
  bool done = Send(conversation, frame);
  if (done) {
    const bool slow = conversation.product == "RB2000" || conversation.product == "RB3000";
    if (slow && !conversation.IsOver()) {
      ProgressMessage(app, true)->StartDownloadTimer(conversation.TimeOutTmr(), allowed);
    }
    done = WaitForAck(conversation) != FlagTrue;
  }
  EndExchange(conversation, done);
  if (DownloadProgress* message = ProgressMessage(app, false)) message->StopDownloadTimer();
  conversation.CommClose();
  return done;
}

bool DownloadBlocks(Conversation& conversation) {
  const bool done = WriteBlocks(conversation);
  EndExchange(conversation, done);
  conversation.CommClose();
  return done;
}

Taken UploadImage(Conversation& conversation, ConfigurationForm& form) {
  const std::int32_t headerLength = conversation.product == "RB2000" || conversation.product == "RB3000" ? 10 : 12;
  SetTimeOut(conversation, ReadInterval);
  conversation.app.globals.CommFailed = FlagFalse;
  OpenExchange(conversation, Exchange::Kind::Reading);
  conversation.CommFlush();
  conversation.exchange.Next("the request of the configuration");
  Taken taken = Taken::Nothing;
  Bytes reply;
  if (Send(conversation, ImageRequest)) ReadBytes(conversation, reply, 4);
  if (reply.size() >= 4 && Mid(reply, 1, 2) == ImageReplyStart) {
    const std::int32_t total = Asc(reply, 3) + 256 * Asc(reply, 4) + 2;
    conversation.exchange.SetTotal(total);
    const Bytes data = ReadImage(conversation, total, headerLength);
    const auto length = static_cast<std::size_t>(std::max(0, total - headerLength - 2));  // without the checksum
    if (!conversation.IsOver()) taken = TakeImage(conversation, data, length, form);
  } else {
    if (reply.size() >= 4) {
      conversation.exchange.Refuse("what came is no configuration of the " + conversation.product + ": " +
                                   HexText(reply));
    }
    conversation.exchange.End(false);
    conversation.Answered(false);
  }
  conversation.CommClose();
  return taken;
}

Taken UploadBlocks(Conversation& conversation, ConfigurationForm& form) {
  Globals& globals = conversation.app.globals;
  globals.CommFailed = FlagFalse;
  SetTimeOut(conversation, ReadInterval);
  globals.BlockAddressHigh = 0;
  const Taken taken = ReadBlocks(conversation, form);
  EndExchange(conversation, taken == Taken::All);
  if (taken == Taken::All) {
    form.Parameter_Setup_VK();
  } else {
    globals.CommFailed = FlagTrue;
  }
  conversation.CommClose();
  return taken;
}

bool SendReboot(Conversation& conversation) {
  OpenExchange(conversation, Exchange::Kind::Restarting);
  conversation.CommFlush();
  conversation.exchange.Next("the restart");
  const bool sent = SendWhole(conversation, Restart);
  conversation.CommClose();
  return sent;
}

}  // namespace vk32
