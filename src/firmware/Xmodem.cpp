// The Xmodem sender.
#include "firmware/Xmodem.h"

#include <algorithm>

#include "app/App.h"
#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

constexpr char Soh = 0x01, Eot = 0x04;
constexpr std::uint8_t AckByte = Ack, NakByte = 0x15, NoAnswer = 255;
constexpr std::size_t BlockLength = 128;                  // bytes; the last block is filled up with 00
constexpr int FirstNakLimit = 60000, AnswerLimit = 5000;  // ms

/// The message of a block, by its number from 1; a whole one of 00 behind the data's end.
Bytes BlockMessage(const Bytes& data, std::size_t number) {
  const std::string_view block =
      std::string_view(data).substr(std::min((number - 1) * BlockLength, data.size()), BlockLength);
  Bytes message;
  message.reserve(BlockLength + 4);
  message.append({Soh, static_cast<char>(number & 255), static_cast<char>(255 - (number & 255))});
  message.append(block).append(BlockLength - block.size(), '\0');
  message.push_back(static_cast<char>(Xmodem::XmodemChecksum(block)));
  return message;
}

}  // namespace

bool Xmodem::XmodemSend(const Bytes& data) {
  const std::size_t total = data.size();
  const std::size_t blocks = (total + BlockLength - 1) / BlockLength;
  form_.StartOfflineProgressBar();
  conversation_.CommOpen();  // the terminal has it open: "Port in use."
  SetDeviceLink(conversation_);
  conversation_.CommFlush();
  if (XmodemReadByte(FirstNakLimit) != NakByte) return Fail("the device did not ask for it");
  Bytes message = BlockMessage(data, 1), following;
  for (std::size_t number = 1; number <= blocks; ++number) {
    std::uint8_t answer = NakByte;
    while (answer == NakByte) {
      Send(conversation_, message);
      following = BlockMessage(data, number + 1);  // while the device looks at this one
      answer = XmodemReadByte(AnswerLimit);
    }
    if (answer != AckByte) {
      const std::string which = "block " + std::to_string(number) + " of " + std::to_string(blocks);
      return Fail(XmodemTimedOut ? "no answer to " + which : which + " was refused");
    }
    form_.UpdateOfflineProgressBar(std::min(number * BlockLength, total), total);
    message.swap(following);
  }
  const bool failed = XmodemSendEot();
  if (failed) whyFailed_ = "its end was not confirmed";
  form_.FinishOfflineProgressBar();
  return failed;
}

bool Xmodem::Fail(const std::string& why) {
  whyFailed_ = why;
  conversation_.Answered(false);
  conversation_.CommClose();
  return true;
}

std::uint8_t Xmodem::XmodemChecksum(std::string_view block) {
  std::int16_t sum = 0;
  for (const char byte : block) sum = static_cast<std::int16_t>(sum + static_cast<std::uint8_t>(byte));
  return static_cast<std::uint8_t>(sum & 255);
}

std::uint8_t Xmodem::XmodemReadByte(int limit) {
  XmodemTimedOut = false;
  StartTimer(limit);
  Bytes byte;
  const auto ended = [&] { return XmodemTimedOut || conversation_.IsOver() || conversation_.HasGone(); };
  while (byte.empty() && !ended()) PollPort(conversation_, byte, 1);
  XmodemTimer.reset();
  const bool answered = !XmodemTimedOut && !byte.empty() && !conversation_.IsOver();
  conversation_.Answered(answered);
  return answered ? CByte(Asc(byte, 1)) : NoAnswer;
}

void Xmodem::StartTimer(int limit) {
  EventLoop& loop = conversation_.app.forms.dispatcher.Loop();
  XmodemTimer.emplace(loop, std::chrono::milliseconds(limit), [this, limit] { XmodemTimerProc(limit); });
}

/// Nobody reads the port while a box waits for the user: a time that runs out then does not count.
void Xmodem::XmodemTimerProc(int limit) {
  if (conversation_.app.forms.IsAsking()) return StartTimer(limit);
  XmodemTimedOut = true;
}

bool Xmodem::XmodemSendEot() {
  Send(conversation_, Bytes(1, Eot));
  return XmodemReadByte(AnswerLimit) != AckByte;
}

}  // namespace vk32
