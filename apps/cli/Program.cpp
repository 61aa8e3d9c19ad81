// One run of the program without a screen.
#include "cli/Program.h"

#include <algorithm>
#include <optional>

#include "cli/Configuration.h"
#include "listing/CompareForm.h"
#include "platform/Files.h"
#include "script/Quoting.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

const std::string Reminder = "Press the Configure button on the ";
const std::string NothingSent = "Nothing has been sent.";
constexpr const char* Installed = "Firmware has been successfully installed.";

struct ModelButton {
  std::string_view model;
  const char* name;
};
constexpr ModelButton ModelButtons[] = {{"AB Ethernet, ASCII, DF1", "ABEthAsciiDf1ModelCmd"},
                                        {"AB Ethernet, Modbus", "ABEthModbusModelCmd"}};

}  // namespace

void World::Stop() {
  stopped = true;
  if (running != nullptr) running->Stop();
}

void World::LookForStop() {
  loop.Wait({-1, WaitFor::ToRead, loop.Now()});
  loop.RunDue();
  LeaveIfStopped("");
}

void World::RequireUser() const {
  if (console.yes || console.waitForEnter) return;
  throw Failure(
      ExitStatus::WrongUsage,
      "You are asked to make the device ready, and there is no terminal to answer at. Do it first and give --yes.");
}

void World::Confirm(const std::string& text) {
  if (console.yes || console.waitForEnter(text + "\nPress Enter to go on.\n") || stopped) return;
  Stop();
}

Program::Program(World& world, const Target& target_)
    : target(target_),
      world_(world),
      screen_(world, [this](const std::string& line) { refusal_ = line; }),
      app_(world.loop, screen_, world.driver, world.names),
      script_(app_, screen_) {
  world_.running = this;
  StartProgram(app_);
  Do("click Splash", ExitStatus::WrongUsage);
  std::string button = target.product;
  std::erase(button, '-');
  Do("click MainMenu." + button + "Cmd", ExitStatus::WrongUsage);
  for (const ModelButton& model : ModelButtons) {
    if (model.model == target.model) Do(std::string("click MainMenu.") + model.name, ExitStatus::WrongUsage);
  }
  wizard_ = FindProduct(target.product).wizard;
}

Program::~Program() {
  screen_.EndProgress();
  world_.running = nullptr;
}

Form& Program::FormOf(const std::string& name) const {
  if (Form* form = app_.forms.Find(name)) return *form;
  throw Failure(ExitStatus::NoAnswer, "The " + target.product + " has nothing to show.");
}

void Program::Judge(const std::string& refusal, ExitStatus ifRefused) {
  const std::string told = screen_.TakeTold();
  screen_.EndProgress();
  world_.LeaveIfStopped(state_);
  ifRefused = StatusOf(ifRefused);
  if (!told.empty()) throw Failure(ifRefused, told + Hint());
  if (!refusal.empty()) throw Failure(ifRefused, screen_.ForUser(refusal));
}

ExitStatus Program::StatusOf(ExitStatus ifRefused) const {
  const bool taken = screen_.talks && app_.comm.Opens() == opens_;
  return taken && ifRefused == ExitStatus::NoAnswer ? ExitStatus::NoPort : ifRefused;
}

std::string Program::Hint() const {
  const Form* wizard = app_.forms.Find(wizard_);
  const auto* hint = wizard ? dynamic_cast<const Label*>(wizard->Find("PageHintLbl")) : nullptr;
  return hint && hint->Visible && !hint->Words().empty() ? "\n" + screen_.ForUser(hint->Words()) : "";
}

void Program::Do(const std::string& command, ExitStatus ifRefused) {
  const bool done = script_.RunLine(command);
  Judge(done ? "" : refusal_.substr(refusal_.find(' ') + 1), ifRefused);
}

void Program::Act(const std::function<void()>& act, ExitStatus ifRefused) {
  std::optional<Failure> failure;
  app_.forms.dispatcher.Dispatch([&] {
    try {
      act();
    } catch (const Failure& caught) {
      failure = caught;
    }
  });
  if (failure) throw Failure(*failure);
  Judge("", ifRefused);
}

void Program::Stop() {
  script_.RunLine("click " + (app_.forms.Find(wizard_) ? wizard_ + ".CancelCmd" : "ProductMenu.ExitCmd"));
}

void Program::ChoosePort(const std::string& port) {
  screen_.talks = true;
  const std::string name = FindPort(world_.names, port);
  screen_.portName = name, screen_.portGiven = port;
  Do("select ProductMenu.COMCbo " + name, ExitStatus::NoPort);
  opens_ = app_.comm.Opens();
}

void Program::OpenWizard() { Do("click ProductMenu.ConfigureCmd", ExitStatus::WrongUsage); }

void Program::ExpectReminder() {
  world_.RequireUser();
  screen_.Expect(Reminder + target.product, [this](const std::string& text) { world_.Confirm(text); });
}

void Program::Upload() {
  ExpectReminder();
  Click("UploadCmd", ExitStatus::NoAnswer);
  const Form& wizard = Wizard();
  const bool read = wizard.Get<Label>("SourceLbl").Words().starts_with("Read from ");
  if (read && !wizard.Get<Image>("StatusMark").Visible) return;
  throw Failure(StatusOf(ExitStatus::NoAnswer), screen_.ForUser(wizard.Get<Label>("StatusLbl").Words()));
}

void Program::Open(const std::string& path) {
  Do("check " + wizard_ + ".OpenConfigChk on", ExitStatus::WrongUsage);
  screen_.QueueFile(path);
  Click("NextCmd", ExitStatus::FileRefused);
}

void Program::GoToApply() {
  const Globals& globals = app_.globals;
  while (globals.CurrentPage < globals.LastPage) {
    const int page = globals.CurrentPage;
    Click("NextCmd", ExitStatus::DoesNotFit);
    if (globals.CurrentPage <= page) throw Failure(ExitStatus::DoesNotFit, "A page of the wizard can't be left.");
  }
}

void Program::Save(const std::string& path, Lasting lasting) {
  app_.saves = lasting;
  Click("SaveOpt", ExitStatus::FileRefused);
  screen_.QueueFile(path);
  Click("NextCmd", ExitStatus::DoesNotFit);
  if (app_.forms.Find(wizard_) == nullptr) return;
  const std::string why = WhyNotWritable(path);
  throw Failure(ExitStatus::FileRefused, why.empty() ? path + " could not be saved." : why);
}

void Program::FinishDownload(const std::function<void(const std::string&)>& atReminder,
                             const std::function<void(const std::string&)>& atReadBack) {
  bool reminded = false;
  Act([this] { Wizard().DownOpt.Value = true; }, ExitStatus::DoesNotFit);
  screen_.Expect(Reminder + target.product, [&](const std::string& text) {
    reminded = true;
    atReminder(text);
  });
  if (atReadBack) screen_.Expect(Reminder + target.product, atReadBack);
  screen_.Expect("Configuration has been downloaded to the " + target.product, [](const std::string&) {});
  try {
    Click("NextCmd", ExitStatus::NoAnswer);
  } catch (const Failure& failure) {
    screen_.TakeMissing();
    if (reminded || failure.status == ExitStatus::Stopped) throw;
    throw Failure(ExitStatus::DoesNotFit, failure.what());
  }
}

void Program::Check() {
  FinishDownload([this](const std::string&) { script_.RunLine("click " + wizard_ + ".CancelCmd"); });
  screen_.TakeMissing();
}

void Program::Download(bool verifies) {
  world_.RequireUser();
  std::function<void(const std::string&)> readBack;
  bool acknowledged = false;
  if (verifies) {
    Do("check " + wizard_ + ".VerifyChk on", ExitStatus::WrongUsage);
    readBack = [&](const std::string& text) {
      acknowledged = true;
      state_ = "The " + target.product + " has acknowledged the configuration; it is not verified.";
      world_.Confirm("The " + target.product + " has acknowledged the configuration. Next it is read back.\n" + text);
    };
  }
  state_ = NothingSent;
  const auto atReminder = [this](const std::string& text) {
    world_.Confirm(text);
    if (world_.stopped) return;
    state_ = "The " + target.product + " has not acknowledged the configuration: read it to see what it holds.";
  };
  try {
    FinishDownload(atReminder, readBack);
    if (screen_.TakeMissing() > 0) throw Failure(ExitStatus::NoAnswer, "The download has not come to its end.");
  } catch (const Failure& failure) {
    if (failure.status == ExitStatus::NoPort) throw Failure(failure.status, failure.what() + ("\n" + NothingSent));
    if (failure.status != ExitStatus::NoAnswer) throw;
    if (IsLoaded(CompareForm::FormName)) {
      const auto& comparison = dynamic_cast<const CompareForm&>(FormOf(CompareForm::FormName));
      throw Failure(ExitStatus::Different, failure.what() + ("\n" + DifferenceLines(comparison.Differences())));
    }
    if (acknowledged) throw Failure(ExitStatus::Different, failure.what());
    throw Failure(ExitStatus::NoAnswer, failure.what() + ("\n" + state_));
  }
  state_.clear();
}

void Program::ReadDeviceInfo() { Do("click ProductMenu.DeviceInfoCmd", ExitStatus::NoAnswer); }

void Program::InstallFirmware(const std::string& path) {
  Do("click ProductMenu.UpgradeCmd", ExitStatus::WrongUsage);
  wizard_ = "Firmware";
  Do("type Firmware.FirmFileTxt " + Quote(path), ExitStatus::FileRefused);
  Click("NextCmd", ExitStatus::FileRefused);
  const Form& form = FormOf(wizard_);
  world_.RequireUser();
  world_.Confirm(screen_.ForUser(form.Get<Label>("Label1").Words() + "\n" + form.Get<Label>("Label2").Words()));
  world_.LeaveIfStopped(NothingSent);
  state_ = "If erasing had begun, the " + target.product + " has no firmware: install it again.";
  Click("NextCmd", ExitStatus::NoAnswer);
  const std::string end = FormOf(wizard_).Get<Label>("ProgressInfoLbl").Words();
  if (end != Installed) throw Failure(ExitStatus::NoAnswer, screen_.ForUser(end) + "\n" + state_);
}

}  // namespace vk32
