// The recovery mode of a simulated gateway.
#include "sim/OfflineManager.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "link/Frames.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

constexpr char Xon = 0x11, Xoff = 0x13;
constexpr char Escape = 0x1B;

constexpr Time Patience = 10s;  // without a byte, then it is no longer there
constexpr Time WordPause = 1s;  // between the letters of a word
constexpr Time RestartTime = 1s;
constexpr Time NakInterval = 3s;  // while it waits for a file
constexpr int NakLimit = 20;      // so many without a file
constexpr Time TextPause = 2s;    // ends a file that comes as a plain stream
constexpr Time StreamPause = 1s;  // ends the stream of the exchange, if the line was not held meanwhile
constexpr int Dots = 6;           // while the menu erases
constexpr std::size_t BurnLength = 4096;

constexpr const char* BannerText =
    "=================================================\r\n"
    "  Offline Manager\r\n"
    "  Norvanta Industrial Gateways\r\n"
    "=================================================\r\n"
    "\r\n"
    "The system code is stopped. The gateway comes back\r\n"
    "to its configuration mode by itself 10 seconds\r\n"
    "after the last key.\r\n";
constexpr const char* MenuText =
    "\r\n"
    "Main Menu\r\n"
    "\r\n"
    "  1. Show Firmware Version\r\n"
    "  2. Write New Firmware\r\n"
    "  3. Restart\r\n"
    "\r\n"
    "Selection: ";

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

}  // namespace

/// A key that chooses as soon as it comes. Who types the whole word, or a CR, gets them passed over.
struct OfflineManager::Choice {
  const Stage& at;
  char key;
  std::string_view rest;
  void (OfflineManager::*act)(Time now);
};

const OfflineManager::Stage OfflineManager::Away{&OfflineManager::TakeKey, &OfflineManager::LeaveAt};
const OfflineManager::Stage OfflineManager::AtMenu{&OfflineManager::TakeKey, &OfflineManager::LeaveAt};
const OfflineManager::Stage OfflineManager::AtQuestion{&OfflineManager::TakeKey, &OfflineManager::LeaveAt};
const OfflineManager::Stage OfflineManager::Wiping{&OfflineManager::Drop, &OfflineManager::ShowDot};
const OfflineManager::Stage OfflineManager::Ready{&OfflineManager::TakeFirst, &OfflineManager::AskForFile};
const OfflineManager::Stage OfflineManager::InBlocks{&OfflineManager::TakeBlockByte, &OfflineManager::BreakOff};
const OfflineManager::Stage OfflineManager::InText{&OfflineManager::TakeText, &OfflineManager::EndFile};
const OfflineManager::Stage OfflineManager::Erasing{&OfflineManager::AwaitEnd, &OfflineManager::SayErased};
const OfflineManager::Stage OfflineManager::Erased{&OfflineManager::AwaitEnd, &OfflineManager::SayReady};
const OfflineManager::Stage OfflineManager::InStream{&OfflineManager::TakeStream, &OfflineManager::EndBurnOrStream};
const OfflineManager::Stage OfflineManager::Ending{&OfflineManager::AwaitEnd, &OfflineManager::LeaveAt};
const OfflineManager::Stage OfflineManager::Deaf{&OfflineManager::Drop, &OfflineManager::LeaveAt};

const OfflineManager::Choice OfflineManager::Choices[] = {
    {AtMenu, '1', "\r", &OfflineManager::ShowVersion},   {AtMenu, '2', "\r", &OfflineManager::AskToErase},
    {AtMenu, '3', "\r", &OfflineManager::Restart},       {AtQuestion, 'y', "", &OfflineManager::Wipe},
    {AtQuestion, 'n', "o\r", &OfflineManager::ShowMenu},
};

OfflineManager::Reaction OfflineManager::Take(char byte, Time now) {
  (this->*stage_->take)(byte, now);
  return std::exchange(reaction_, {});
}

OfflineManager::Reaction OfflineManager::RunDue() {
  const Time now = *due_;
  due_.reset();
  (this->*stage_->timeOver)(now);
  return std::exchange(reaction_, {});
}

void OfflineManager::Go(const Stage& stage, std::optional<Time> due) {
  stage_ = &stage;
  due_ = due;
}

void OfflineManager::Leave() {
  Go(Away, std::nullopt);
  commandBegun_ = false;
  rest_ = {};
}

void OfflineManager::TakeKey(char key, Time now) {
  due_ = now + Patience;
  if (std::exchange(commandBegun_, false)) {
    if (key == FirmwareMode[1]) return BeginExchange(now);
    if (key == EndOfExchange[1]) return Leave();
    Say(EndOfExchange.substr(0, 1));
  }
  if (EndsWord(key, now)) return;
  switch (key) {
    case '\xA5': commandBegun_ = true; break;
    case Escape: ShowBanner(now); break;
    case '\r': Repeat(now); break;
    case '\b': Say("\b \b"); break;
    default: Say({&key, 1}); Choose(key, now);
  }
}

void OfflineManager::Repeat(Time now) {
  if (stage_ == &AtQuestion) return AskToErase(now);
  ShowMenu(now);
}

void OfflineManager::Choose(char key, Time now) {
  for (const Choice& choice : Choices) {
    if (&choice.at != stage_ || choice.key != Lower(key)) continue;
    rest_ = choice.rest;
    restUntil_ = now + WordPause;
    return (this->*choice.act)(now);
  }
}

bool OfflineManager::EndsWord(char key, Time now) {
  const std::size_t at = now < restUntil_ ? rest_.find(Lower(key)) : std::string_view::npos;
  rest_ = at == std::string_view::npos ? "" : rest_.substr(at + 1);
  restUntil_ = now + WordPause;
  return at != std::string_view::npos;
}

void OfflineManager::ShowBanner(Time now) {
  const Bytes banner = "\r\n" + product_ + "\r\n" + BannerText + MenuText;
  const auto most = static_cast<std::size_t>(misbehaviour_.bannerLength.value_or(INT32_MAX));
  Say(banner.substr(0, most));
  Go(AtMenu, now + Patience);
}

void OfflineManager::ShowMenu(Time now) {
  Say("\r\n");
  Say(MenuText);
  Go(AtMenu, now + Patience);
}

void OfflineManager::ShowVersion(Time now) {
  Say("\r\n" + (!erased_            ? version_
                : firmware_.empty() ? "No system code"
                                    : "System code of " + std::to_string(firmware_.size()) + " bytes"));
  ShowMenu(now);
}

void OfflineManager::AskToErase(Time now) {
  Say("\r\nErase the system code? ");
  Go(AtQuestion, now + Patience);
}

void OfflineManager::Restart(Time now) {
  Say("\r\nRestarting\r\n");
  Go(Deaf, now + RestartTime);
}

void OfflineManager::Wipe(Time now) {
  Erase();
  Say("\r\nErasing ");
  Go(Wiping, now + times.erase / Dots);
}

void OfflineManager::ShowDot(Time now) {
  Say(".");
  if (++ticks_ < Dots) {
    due_ = now + times.erase / Dots;
    return;
  }
  Say("\r\nReady to receive\r\n");
  ticks_ = 0;
  Go(Ready, now + NakInterval);
}

void OfflineManager::AskForFile(Time now) {
  if (++ticks_ > NakLimit) return BreakOff(now);
  if (takesXmodem_) Say({&XmodemReceiver::Nak, 1});
  due_ = now + NakInterval;
}

void OfflineManager::TakeFirst(char byte, Time now) {
  if (byte == Escape) return ShowBanner(now);
  if (takesXmodem_ && (byte == XmodemReceiver::Soh || byte == XmodemReceiver::Eot)) {
    receiver_ = XmodemReceiver(misbehaviour_.naks, misbehaviour_.cancel);
    Go(InBlocks, {});
  } else {
    Go(InText, {});
  }
  (this->*stage_->take)(byte, now);
}

void OfflineManager::TakeBlockByte(char byte, Time now) {
  due_ = now + Patience;
  const char answer = receiver_.Take(byte, firmware_);
  if (answer == 0) return;
  Say({&answer, 1});
  if (receiver_.Ended()) EndFile(now);
  if (answer == XmodemReceiver::Can) BreakOff(now);
}

void OfflineManager::TakeText(char byte, Time now) {
  firmware_ += byte;
  due_ = now + TextPause;
  LeaveIfTold();
}

/// A file begins with ":", so that two bytes A5 in its place are the command that leaves.
bool OfflineManager::LeaveIfTold() {
  if (firmware_ != EndOfExchange) return false;
  firmware_.clear();
  Leave();
  return true;
}

void OfflineManager::EndFile(Time now) {
  reaction_.hasFirmware = true;
  Say("\r\nReceived " + std::to_string(firmware_.size()) + " bytes");
  ShowMenu(now);
}

void OfflineManager::BreakOff(Time now) {
  Say("\r\nBroken off after " + std::to_string(firmware_.size()) + " bytes");
  ShowMenu(now);
}

void OfflineManager::Erase() {
  erased_ = true;
  firmware_.clear();
  ticks_ = 0;
  burnEnd_.reset();
}

void OfflineManager::BeginExchange(Time now) {
  Erase();
  Go(Erasing, now + times.erase);
}

void OfflineManager::SayErased(Time now) {
  Say({&Ack, 1});
  if (misbehaviour_.noReady) return Go(Ending, now + Patience);
  Go(Erased, now + times.ready);
}

void OfflineManager::SayReady(Time now) {
  Say({&Ack, 1});
  Go(InStream, now + Patience);
}

void OfflineManager::TakeStream(char byte, Time now) {
  firmware_ += byte;
  if (LeaveIfTold()) return;
  if (firmware_.size() % BurnLength == 0) {
    if (!burnEnd_) Say({&Xoff, 1});
    if (misbehaviour_.holdForGood) return Go(Deaf, std::nullopt);
    burnEnd_ = std::max(burnEnd_.value_or(now), now) + times.burn;
  }
  due_ = burnEnd_.value_or(now + StreamPause);
}

void OfflineManager::EndBurnOrStream(Time now) {
  if (burnEnd_) {
    burnEnd_.reset();
    Say({&Xon, 1});
    due_ = now + StreamPause;
    return;
  }
  if (firmware_.empty()) return Leave();
  reaction_.hasFirmware = true;
  if (!misbehaviour_.noBurn) Say({&Ack, 1});
  Go(Ending, now + Patience);
}

void OfflineManager::AwaitEnd(char byte, Time) {
  if (commandBegun_ && byte == EndOfExchange[1]) return Leave();
  commandBegun_ = byte == EndOfExchange[0];
}

}  // namespace vk32::sim
