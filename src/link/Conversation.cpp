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

std::shared_ptr<Conversation> Conversation::Begin(App& app, Form& form, const Purpose& purpose) {
  return Begin(app, form, purpose, app.globals.ComPortText == "None" ? 0 : app.globals.ComPortNumber);
}

std::shared_ptr<Conversation> Conversation::Begin(App& app, Form& form, const Purpose& purpose, std::int32_t port) {
  if (RefusedByConversation(app)) return nullptr;
  return std::shared_ptr<Conversation>(new Conversation(app, form, purpose, port));
}

Conversation::Conversation(App& app_, Form& form_, const Purpose& purpose, std::int32_t port_)
    : app(app_),
      form(form_),
      port(port_),
      product(app_.globals.CurrentProduct),
      model(app_.globals.CurrentModel),
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
  if (status == 0 && app.lateAnswers.erase(port) > 0) DropLateAnswer();
  return status;
}

std::int32_t Conversation::CommSet() { return app.comm.CommSet(port, settings_); }

std::int32_t Conversation::CommSetNOXON() { return app.comm.CommSetNOXON(port, settings_); }

std::int32_t Conversation::CommFlush() { return app.comm.CommFlush(port); }

std::int32_t Conversation::CommClose() { return app.comm.CommClose(port); }

std::int32_t Conversation::CommRead(Bytes& data, std::int32_t maximum) {
  return app.comm.CommRead(port, data, maximum);
}

std::int32_t Conversation::CommWrite(const Bytes& data) {
  if (IsOver()) return -1;
  return app.comm.CommWrite(port, data, [this] { return IsOver(); });
}

std::int32_t Conversation::CommWriteLast(const Bytes& data) { return app.comm.CommWrite(port, data); }

bool Conversation::IsOpen() const { return app.comm.IsOpen(port); }

int Conversation::WaitHandle() const { return app.comm.WaitHandle(port); }

void Conversation::DropLateAnswer() {
  bool quiet = false, enough = false;
  EventLoop& loop = app.forms.dispatcher.Loop();
  const Alarm longest(loop, LongestDrop, [&] { enough = true; });
  while (!quiet && !enough && !IsOver()) {
    const Alarm silence(loop, QuietTime, [&] { quiet = true; });
    Bytes late;
    const auto over = [&] { return !late.empty() || quiet || enough || IsOver(); };
    while (!over()) PollPort(*this, late, LateChunk, over);
  }
}

std::string Conversation::Words() const {
  const std::string place = port == 0 ? "" : " on COM" + Str(port);
  return std::string(purpose_.doing) + " of the " + product + place + " is under way.\r\n" + purpose_.howToEnd;
}

bool RefusedByConversation(App& app) {
  if (app.conversation == nullptr) return false;
  app.forms.MsgBox(app.conversation->Words(), MessageIcon::Information);
  return true;
}

}  // namespace vk32
