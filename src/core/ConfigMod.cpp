// The two transfer styles: numbered blocks, and one image.
#include "core/ConfigMod.h"

#include <vector>

#include "app/App.h"
#include "core/Convert.h"
#include "core/DownloadProgress.h"
#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

constexpr int ReadInterval = 3000;  // ms

/// Returns the port, for CloseExchange: another one may be chosen meanwhile.
std::int32_t OpenExchange(App& app) {
  const std::int32_t port = app.globals.ComPortNumber;
  OpenLink(app);
  SetDeviceLink(app);
  return port;
}

void CloseExchange(App& app, std::int32_t port) { app.comm.CommClose(port); }

/// The block numbers of BlockList, whose element 0 counts them. A copy: another product may be chosen meanwhile.
std::vector<std::int16_t> BlocksOf(const Globals& globals) {
  const auto& list = globals.BlockList;
  return list.empty() ? list : std::vector<std::int16_t>(list.begin() + 1, list.begin() + 1 + list[0]);
}

void SelectBlock(Globals& globals, std::int16_t block, std::int16_t length, const Bytes& data = {}) {
  globals.BlockAddressExt = 0;
  globals.BlockNumber = block;
  globals.BlockLength = length;
  globals.BlockData = data;
}

DownloadProgress* ProgressMessage(App& app, bool load) {
  Form* form = load ? &app.forms.Load(DownloadProgress::FormName) : app.forms.Find(DownloadProgress::FormName);
  return dynamic_cast<DownloadProgress*>(form);
}

/// A wizard that was closed meanwhile, by Cancel or by another FINISH that went well, has nothing more to tell.
void TellFailure(App& app, const Form& form) {
  if (form.IsLoaded()) TellTimeOut(app);
}

/// Reads one block's reply into `reply`. False on a time-out or a wrong checksum.
bool ReadBlock(App& app, Bytes& reply, Form& form) {
  if (!SendAndWaitForAck(app, BuildFrame(app.globals, BlockFrame::Read), form)) return false;
  const std::int32_t n = ReadBytes(app, reply, BlockFrame::ReplyLength, form);
  if (n < 0) return false;
  return n == 0 || Mid(reply, n, 1) == Checksum8(reply, n - 1);
}

/// The part of an image upload behind "TR" and the length: the image, without its header and checksum.
Bytes ReadImage(App& app, std::int32_t total, std::int32_t headerLength, Form& form) {
  Bytes header, data;
  SetTimeOut(form, ReadInterval);
  ReadBytes(app, header, headerLength, form);
  SetTimeOut(form, ReadInterval);
  ReadBytes(app, data, total - headerLength, form);
  Send(app, Bytes(1, Ack));
  data.resize(data.size() < 2 ? 0 : data.size() - 2);
  return data;
}

}  // namespace

bool DownloadImage(App& app, ConfigurationForm& form) {
  const int registers = static_cast<int>(app.globals.ConfigImage.size()) / 2;
  const int allowed = CLng((registers * 0.1 + 5) * 1000);  // ms
  SetTimeOut(form, allowed);
  const std::int32_t port = OpenExchange(app);
  app.comm.CommFlush(app.globals.ComPortNumber);
  Bytes frame;
  try {
    frame = BuildFrame(app.globals, ImageFrame::Code);
  } catch (const RuntimeFault&) {
    CloseExchange(app, port);
    app.forms.MsgBox(
        "The configuration can't be sent: the bytes of an image message may add up to 32767 at most, and "
        "these add up to more.\r\nUse fewer mapping slots or smaller numbers, and click FINISH again.",
        MessageIcon::Critical, "Error!");
    return false;
  }
  bool done = Send(app, frame);
  if (done) {
    const std::string& product = app.globals.CurrentProduct;
    if (product == "RB2000" || product == "RB3000") {
      ProgressMessage(app, true)->StartDownloadTimer(form.Get<Timer>("TimeOutTmr"), allowed);
    }
    done = WaitForAck(app, form) != FlagTrue;
  }
  if (!done) TellFailure(app, form);
  if (DownloadProgress* message = ProgressMessage(app, false)) message->StopDownloadTimer();
  CloseExchange(app, port);
  return done;
}

bool DownloadBlocks(App& app, ConfigurationForm& form) {
  Globals& globals = app.globals;
  const std::int32_t port = OpenExchange(app);
  app.comm.CommFlush(globals.ComPortNumber);
  const std::string product = globals.CurrentProduct;  // makes the frames; when it changes, the exchange is over
  const auto table = globals.BlockTable;
  for (const std::int16_t block : BlocksOf(globals)) {
    const Bytes& data = table[static_cast<std::size_t>(block)];
    SelectBlock(globals, block, CInt(static_cast<double>(data.size())), data);
    if (globals.CurrentProduct != product || !SendAndWaitForAck(app, BuildFrame(globals, BlockFrame::Write), form)) {
      TellFailure(app, form);
      CloseExchange(app, port);
      return false;
    }
  }
  Send(app, EndOfExchange);
  CloseExchange(app, port);
  return true;
}

void UploadImage(App& app, ConfigurationForm& form) {
  const std::string& product = app.globals.CurrentProduct;
  const std::int32_t headerLength = product == "RB2000" || product == "RB3000" ? 10 : 12;
  SetTimeOut(form, ReadInterval);
  app.globals.CommFailed = FlagFalse;
  const std::int32_t port = OpenExchange(app);
  app.comm.CommFlush(app.globals.ComPortNumber);
  Bytes reply;
  if (Send(app, ImageRequest)) ReadBytes(app, reply, 4, form);
  if (reply.size() >= 4 && Mid(reply, 1, 2) == ImageReplyStart) {
    const std::int32_t total = Asc(reply, 3) + 256 * Asc(reply, 4) + 2;
    const Bytes data = ReadImage(app, total, headerLength, form);
    // A wizard that was closed meanwhile takes nothing over: the registers may be another's by now.
    if (form.IsLoaded()) {
      if (data.size() / 2 <= app.globals.RegisterHigh.size()) {
        app.globals.LoadRegisters(data, 0);
        form.Parameter_Setup_RB();
      } else {
        TellTimeOut(app);  // longer than any image: not this product
      }
    }
  }
  CloseExchange(app, port);
}

void UploadBlocks(App& app, ConfigurationForm& form) {
  Globals& globals = app.globals;
  globals.CommFailed = FlagFalse;
  SetTimeOut(form, ReadInterval);
  globals.BlockAddressHigh = 0;
  const std::int32_t port = OpenExchange(app);
  const std::string product = globals.CurrentProduct;
  for (const std::int16_t block : BlocksOf(globals)) {
    Bytes reply;
    SelectBlock(globals, block, BlockFrame::ReadLength);
    if (globals.CurrentProduct != product || !ReadBlock(app, reply, form)) {
      TellFailure(app, form);
      globals.CommFailed = FlagTrue;
      CloseExchange(app, port);
      return;
    }
    if (form.IsLoaded()) form.RemoveData(reply);
  }
  Send(app, EndOfExchange);
  if (form.IsLoaded()) form.Parameter_Setup_VK();
  CloseExchange(app, port);
}

void SendReboot(App& app) {
  const std::int32_t port = OpenExchange(app);
  app.comm.CommFlush(app.globals.ComPortNumber);
  Send(app, Restart);
  CloseExchange(app, port);
}

}  // namespace vk32
