// On a real X server: what the user does while the program waits for a silent device. The pointer rests after a click,
// so that nothing but the act itself can wake the program.
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <future>
#include <thread>

#include "DesktopScreen.h"
#include "FormWindow.h"
#include "QtEventLoop.h"
#include "app/App.h"
#include "platform/SystemEventLoop.h"
#include "platform/posix/PosixSerialDriver.h"
#include "shell/Products.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

constexpr Time IntoTheWait = 100ms;
constexpr Time Prompt = 400ms;  // 200 ms, and as much for a busy machine; a tool tip that comes later wakes everything
constexpr Time GivenUp = 2s;

/// Agrees with every question, and tells when a form goes.
class AgreeingScreen : public DesktopScreen {
 public:
  Answer Ask(const MessageBoxRequest& request) override {
    if (request.buttons == MessageButtons::SaveDiscardCancel) return Answer::Discard;
    return request.buttons == MessageButtons::YesNo ? Answer::Yes : Answer::OK;
  }
  std::optional<std::string> AskFile(const FileDialogRequest&) override { return file.Path(); }
  void FormUnloaded(Form& form) override {
    DesktopScreen::FormUnloaded(form);
    if (onUnload) onUnload(form);
  }
  void ProgramEnded() override {}  // the next row has a program of its own

  std::function<void(const Form&)> onUnload;
  const TemporaryFile file{"new.rom"};
};

/// The program, with a device that says nothing.
struct Program {
  Program() {
    grantpt(device);
    unlockpt(device);
    names.Assign("COM1", ptsname(device));
    screen.file.Fill(":" + std::string(999, '0'));
    StartProgram(app);
    app.forms.Unload("Splash");
    app.globals.ComPortNumber = 1;
    app.globals.ComPortText = "COM1";
    app.globals.CurrentModel = Models()[0].name;
  }
  ~Program() { close(device); }

  std::shared_ptr<Form> Open(const char* product, const char* name) {
    SelectProduct(app.globals, product);
    if (product == std::string("VK-RTX")) app.globals.BlockList = Models()[0].blockList;
    app.forms.dispatcher.Dispatch([&] { app.forms.Show(name); });
    const std::shared_ptr<Form> form = app.forms.Loaded().back();
    const Time limit = loop.Now() + 5s;
    while (!screen.WindowOf(*form)->isActiveWindow() && loop.Now() < limit) QCoreApplication::processEvents();
    return form;
  }

  const int device = posix_openpt(O_RDWR | O_NOCTTY);
  QtEventLoop loop;
  AgreeingScreen screen;
  PortNames names{"", "/nowhere", "/nowhere"};
  PosixSerialDriver driver{loop, names};
  App app{loop, screen, driver, names};
};

/// The user's hands, at the X server.
void Do(const std::string& acts) { EXPECT_EQ(std::system(("xdotool " + acts).c_str()), 0); }
void MoveTo(QPoint place) { Do("mousemove " + std::to_string(place.x()) + " " + std::to_string(place.y())); }
constexpr const char *MouseClick = "mousedown 1 sleep 0.05 mouseup 1", *CloseButton = "close";

void Click(Form& form, const char* button) { form.Get<ImageButton>(button).Click(); }
void Upload(Form& form) { Click(form, "UploadCmd"); }
void ReadInfo(Form& form) { Click(form, "DeviceInfoCmd"); }
void SendByXmodem(Form& form) { Click(form, "SendFirmwareCmd"); }
void Finish(Form& form) {
  form.Get<ComboBox>("EthDHCPLst").Text = "Enabled";
  for (int page = 0; page < 20 && form.IsLoaded(); ++page) Click(form, "NextCmd");
}
void Probe(Form& form) {
  form.Get<CommandButton>("BrowseCmd").Click();
  for (int page = 0; page < 2; ++page) Click(form, "NextCmd");
}

TEST(WaitsTest, WhatTheUserDoesIsTakenAtOnce) {
  struct Row {
    const char *product, *form;
    void (*wait)(Form& form);
    std::string act;  // a button of the form, its window's close button, or keys
  } rows[] = {{"RB2000", "Configuration_RB2000", Upload, "CancelCmd"},
              {"RB2000", "Configuration_RB2000", Upload, CloseButton},
              {"RB2000", "Configuration_RB2000", Upload, "keydown Alt_L sleep 0.05 keydown c"},
              {"VK-RTX", "Configuration_VKRTX", Upload, "CancelCmd"},
              {"VK5300", "Configuration_VK5300", Upload, CloseButton},
              {"VK-RTX", "Configuration_VKRTX", Finish, "CancelCmd"},
              {"VK-RTX", "Configuration_VKRTX", Finish, CloseButton},
              {"VK5300", "ProductMenu", ReadInfo, CloseButton},
              {"VK-RTX", "Firmware", Probe, "CancelCmd"},
              {"VK-RTX", "Firmware", Probe, CloseButton},
              {"VK-RTX", "OfflineMngr", SendByXmodem, "CloseCmd"},
              {"VK-RTX", "OfflineMngr", SendByXmodem, "keydown x"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.form) + " " + row.act);
    Program program;
    const auto kept = program.Open(row.product, row.form);
    Form& form = *kept;
    const FormWindow& window = *program.screen.WindowOf(form);
    Time taken{0};
    const auto end = [&] { program.app.forms.dispatcher.Dispatch([&] { program.app.forms.dispatcher.End(); }); };
    const auto take = [&] {
      taken = program.loop.Now();
      program.loop.StartTimer(0ms, end);
    };
    program.screen.onUnload = [&](const Form& gone) {
      if (&gone == &form) take();
    };
    std::string act = row.act;
    if (Control* button = form.Find(row.act)) {
      const QWidget& widget = *window.WidgetOf(*button);
      MoveTo(widget.mapToGlobal(widget.rect().center()));
      act = MouseClick;
    } else if (row.act == CloseButton) {
      MoveTo(window.frameGeometry().topRight() + QPoint(-12, 12));
      act = MouseClick;
    } else if (form.Find("Term")) {
      form.Get<TextBox>("Term").OnKeyPress = [&](char) {
        take();
        return false;
      };
    }
    auto user = std::async(std::launch::async, [&] {
      std::this_thread::sleep_for(IntoTheWait);
      Do(act);
      return program.loop.Now();
    });
    const Alarm alarm(program.loop, GivenUp, end);
    row.wait(form);
    const Time acted = user.get();
    EXPECT_TRUE(taken > Time{0} && taken < acted + Prompt) << (taken - acted) / 1ms << " ms behind the act";
    Do("keyup Alt_L keyup c keyup x");
  }
}

}  // namespace
}  // namespace vk32
