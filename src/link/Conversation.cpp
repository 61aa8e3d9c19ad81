// One conversation with one device.
#include "link/Conversation.h"

#include "app/App.h"
#include "core/Convert.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr Time QuietTime = 500ms;  // after which a line counts as quiet
constexpr Time LongestDrop = 3s;   // of a device that never falls silent
constexpr int LateChunk = 1024;    // bytes

}  // namespace

std::shared_ptr<Conversation> Conversation::Begin(App& app, Form& form, const Purpose& purpose,
                                                  ExchangeObserver* observer) {
  if (RefusedByConversation(app)) return nullptr;
  return std::shared_ptr<Conversation>(new Conversation(app, form, purpose, observer));
}

Conversation::Conversation(App& app_, Form& form_, const Purpose& purpose, ExchangeObserver* observer)
    : app(app_),
      form(form_),
      port(PortNames::Number(app_.globals.ComPortText)),
      product(app_.globals.CurrentProduct),
      blockList(app_.globals.BlockList),
      exchange(*this, observer),
      purpose_(purpose),
      settings_("baud=" + app_.globals.BaudRate + " parity=N data=8 stop=1") {
  app.conversation = this;
}

Conversation::~Conversation() {
  CommClose();
  if (owed_) app.lateAnswers.insert(port);
  app.conversation = nullptr;
}

std::int32_t Conversation::CommOpen() {
  if (IsOver()) return -1;
  const std::int32_t status = app.comm.CommOpen(port, "COM" + Str(port), settings_);
  if (status > 0) exchange.PortFailed("can't be opened", app.comm.LastMessage());
  return status;
}

std::int32_t Conversation::CommSet() { return app.comm.CommSet(port, settings_); }

std::int32_t Conversation::CommSetNOXON() { return app.comm.CommSetNOXON(port, settings_); }

std::int32_t Conversation::CommFlush() { return app.comm.CommFlush(port); }

std::int32_t Conversation::CommClose() { return app.comm.CommClose(port); }

std::int32_t Conversation::CommRead(Bytes& data, std::int32_t maximum) {
  const std::int32_t status = app.comm.CommRead(port, data, maximum);
  if (status < 0) exchange.PortFailed("has failed", app.comm.LastMessage());
  exchange.Came(data);
  return status;
}

std::int32_t Conversation::CommWrite(const Bytes& data) {
  if (app.lateAnswers.count(port) > 0 && IsOpen()) DropLateAnswer();
  if (IsOver()) return -1;
  sentLast_ = data;
  const std::int32_t left = app.comm.CommWrite(port, data, [this] { return IsOver(); });
  if (left < 0) {
    exchange.PortFailed("has failed", app.comm.LastMessage());
  } else {
    exchange.Sent(data, left);
  }
  return left;
}

std::int32_t Conversation::CommWriteLast(const Bytes& data) { return app.comm.CommWrite(port, data); }

bool Conversation::IsOpen() const { return app.comm.IsOpen(port); }

int Conversation::WaitHandle() const { return app.comm.WaitHandle(port); }

void Conversation::DropLateAnswer() {
  bool quiet = false, enough = false;
  EventLoop& loop = app.forms.dispatcher.Loop();
  const Alarm longest(loop, LongestDrop, [&] { enough = true; });
  while (!quiet && !enough && !IsOver()) {
    bool rang = false, asking = false;  // while a box asks the user, nobody hears whether something comes
    const Alarm silence(loop, QuietTime, [&] {
      rang = true;
      asking = app.forms.IsAsking();
    });
    Bytes late;
    const auto over = [&] { return !late.empty() || rang || enough || IsOver(); };
    while (!over()) PollPort(*this, late, LateChunk);
    quiet = late.empty() && !asking;
  }
  if (!IsOver()) app.lateAnswers.erase(port);
}

std::string Conversation::Words() const {
  const std::string what =
      std::string(purpose_.doing) + " of the " + product + (port == 0 ? "" : " on COM" + Str(port));
  return IsOver() ? what + " is just ending.\r\nTry again." : what + " is under way.\r\n" + purpose_.howToEnd;
}

bool RefusedByConversation(App& app) {
  if (app.conversation == nullptr) return false;
  app.forms.MsgBox(app.conversation->Words(), MessageIcon::Information);
  return true;
}

}  // namespace vk32
