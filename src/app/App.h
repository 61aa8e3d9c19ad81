// The one object that is passed around: what the system shares. Two of them in one process do not know of each other.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "core/Globals.h"
#include "forms/Forms.h"
#include "link/modCOMM.h"
#include "platform/Files.h"
#include "platform/PortNames.h"
#include "trace/TracingDriver.h"

namespace vk32 {

class Conversation;
class Elsewhere;
struct KeptValues;

struct App {
  App(EventLoop& loop, Screen& screen, SerialDriver& untraced, PortNames& portNames);
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  PortNames& ports;
  Globals globals;
  Forms forms;
  TraceRing trace;  // the latest of what has passed on the ports; times count from the start
  TracingDriver driver;
  modCOMM comm;
  Conversation* conversation = nullptr;                           // the one that is under way
  std::map<std::string, std::shared_ptr<const KeptValues>> kept;  // by product and model: of wizards closed unasked
  std::set<std::int32_t> lateAnswers;  // the ports on which an earlier conversation's last answer may still come
  Lasting saves = Lasting::ForGood;    // of the configuration files that it saves
  std::function<std::unique_ptr<Elsewhere>()> lookElsewhere;  // each is good for one reading
  std::function<std::string()> supportText;                   // what a support file holds now
};

/// The version of the program, as the files and the pages show it: "1.8.11".
std::string ProgramVersion();

/// Makes a form known under its FormName.
template <class F>
void RegisterForm(App& app) {
  app.forms.Register(F::FormName, [&app] { return std::make_shared<F>(app); });
}

/// Makes every form of the program known.
void RegisterForms(App& app);
/// Makes every form of the program known, loads the splash page and shows it.
void StartProgram(App& app);

}  // namespace vk32
