// The waits, checksums and probes of the device link.
#include "link/VKComSubs.h"

#include <algorithm>
#include <limits>

#include "app/App.h"
#include "core/Convert.h"
#include "link/Frames.h"

namespace vk32 {
namespace {

constexpr int ProbeInterval = 1000;  // ms
constexpr int BannerLength = 340;    // bytes
constexpr const char* BannerName = "offline manager";

Timer& TimeOutTmrOf(Form& form) { return form.Get<Timer>("TimeOutTmr"); }

/// A wait whose clock was stopped by another exchange of the same form, begun inside of it, is over as well.
void EndIfStopped(Globals& globals, const Timer& timer) {
  if (!timer.Enabled) globals.TimeOutFlag = FlagTrue;
}

/// Clears the flag, reads until `count` bytes have been counted or it is set; stops the timer. Returns the count.
std::int32_t ReadUntilTimeOut(App& app, Bytes& buffer, std::int32_t count, Timer& timer) {
  Globals& globals = app.globals;
  const Wait wait(globals, timer);
  std::int32_t received = 0;
  timer.Enabled = true;
  const auto over = [&] {
    EndIfStopped(globals, timer);
    return received >= count || globals.TimeOutFlag == FlagTrue;
  };
  while (!over()) {
    Bytes chunk;
    received += PollPort(app, chunk, count - received, over);
    buffer += chunk;
  }
  timer.Enabled = false;
  return received;
}

}  // namespace

void SetTimeOutFlag(Globals& globals, const Timer& timer) {
  if (globals.WaitingTimer == nullptr || globals.WaitingTimer == &timer) globals.TimeOutFlag = FlagTrue;
}

Wait::Wait(Globals& globals, const Timer& timer) : globals_(globals), outer_(globals.WaitingTimer) {
  globals.TimeOutFlag = FlagFalse;
  globals.WaitingTimer = &timer;
}

Bytes Checksum8(const Bytes& text, int count) {
  std::int32_t sum = 0;
  for (int i = 1; i <= count; ++i) sum = (sum + Asc(text, i)) & 255;
  return Bytes(1, Chr((256 - sum) & 255));
}

Bytes Checksum16(const Bytes& text, int count) {
  std::int32_t sum = 0;
  for (int i = 1; i <= count; ++i) {
    sum += Asc(text, i);
    if (sum > std::numeric_limits<std::int16_t>::max()) throw RuntimeFault(RuntimeFault::Overflow);
  }
  std::int32_t low = 0, high = 0;
  SplitWord(sum, low, high);
  return Bytes{Chr(low), Chr(high)};
}

std::string LinkSettings(const Globals& globals) { return "baud=" + globals.BaudRate + " parity=N data=8 stop=1"; }

std::int32_t OpenLink(App& app) {
  const std::int32_t port = app.globals.ComPortNumber;
  return app.comm.CommOpen(port, "COM" + Str(port), LinkSettings(app.globals));
}

std::int32_t PollPort(App& app, Bytes& chunk, std::int32_t maximum, const std::function<bool()>& over) {
  const std::int32_t port = app.globals.ComPortNumber;
  const std::int32_t status = app.comm.CommRead(port, chunk, maximum);
  app.forms.dispatcher.DoEvents();
  if (chunk.empty() && !over()) app.comm.Idle(port);
  return status;
}

Flag WaitForAck(App& app, Form& form) {
  Globals& globals = app.globals;
  Timer& timer = TimeOutTmrOf(form);
  const Wait wait(globals, timer);
  Bytes reply;
  timer.Enabled = true;
  const auto over = [&] {
    EndIfStopped(globals, timer);
    return reply == Bytes(1, Ack) || globals.TimeOutFlag == FlagTrue;
  };
  while (!over()) PollPort(app, reply, 1, over);
  timer.Enabled = false;
  return globals.TimeOutFlag;
}

std::int32_t ReadBytes(App& app, Bytes& buffer, std::int32_t count, Form& form) {
  const std::int32_t received = ReadUntilTimeOut(app, buffer, count, TimeOutTmrOf(form));
  return app.globals.TimeOutFlag < FlagTrue ? received : -1;
}

void WaitForTimeOut(App& app, Form& form) {
  Timer& timer = TimeOutTmrOf(form);
  const Wait wait(app.globals, timer);
  timer.Enabled = true;
  while (app.globals.TimeOutFlag != FlagTrue) {
    app.forms.dispatcher.Idle(-1);
    app.forms.dispatcher.DoEvents();
    EndIfStopped(app.globals, timer);
  }
}

void SetTimeOut(Form& form, int milliseconds) {
  Timer& timer = TimeOutTmrOf(form);
  timer.Interval = milliseconds;
  timer.Enabled = false;
}

bool Send(App& app, const Bytes& message) {
  try {
    app.comm.CommWrite(app.globals.ComPortNumber, message);
    return true;
  } catch (const RuntimeFault&) {
    return false;
  }
}

bool SendWhole(App& app, const Bytes& piece) {
  try {
    return app.comm.CommWrite(app.globals.ComPortNumber, piece) == static_cast<std::int32_t>(piece.size());
  } catch (const RuntimeFault&) {
    return false;
  }
}

bool SendAndWaitForAck(App& app, const Bytes& message, Form& form) {
  return Send(app, message) && WaitForAck(app, form) != FlagTrue;
}

void TellTimeOut(App& app) {
  app.forms.MsgBox("A timeout or error has occured while communicating to the " + app.globals.CurrentProduct,
                   MessageIcon::Critical, "Error!");
}

void SetDeviceLink(App& app) {
  const std::string settings = LinkSettings(app.globals);
  const std::int32_t port = app.globals.ComPortNumber;
  app.comm.CommSet(port, settings);
  app.comm.CommFlush(port);
  app.forms.dispatcher.DoEvents();
  app.comm.CommSetNOXON(port, settings);
}

void CheckComPort(App& app) {
  if (OpenLink(app) != 0) {
    std::string error;
    app.comm.CommGetError(error);
    app.forms.MsgBox("UNABLE TO OPEN COM PORT,  Error: " + error, MessageIcon::Information,
                     "INVALID COM PORT!!! Please Select Again.");
    if (Form* menu = app.forms.Find("ProductMenu")) menu->Get<ComboBox>("COMCbo").Text = "None";
    app.globals.ComPortText = "None";
  }
  app.comm.CommClose(app.globals.ComPortNumber);
}

bool DetectOfflineManager(App& app, Timer& timer) {
  const int interval = timer.Interval;
  timer.Interval = ProbeInterval;
  app.globals.TimeOutFlag = FlagFalse;
  OpenLink(app);  // "Port in use." after an earlier try: the probe goes on with the open port
  Bytes text;
  bool found = false;
  if (Send(app, RecoveryProbe)) {
    ReadUntilTimeOut(app, text, BannerLength, timer);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    found = text.find(BannerName) != Bytes::npos && app.globals.TimeOutFlag == FlagFalse;
  }
  timer.Interval = interval;
  app.comm.CommFlush(app.globals.ComPortNumber);
  return found;
}

}  // namespace vk32
