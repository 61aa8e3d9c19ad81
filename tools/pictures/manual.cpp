// The generator of the manual's pictures: carries out scripts on the windows of the program, in virtual time and with
// simulated gateways, and draws the windows that they name.
#include <stdlib.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPainter>
#include <QTimer>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "DesktopScreen.h"
#include "FormWindow.h"
#include "app/App.h"
#include "script/Quoting.h"
#include "script/ScriptSession.h"
#include "support/FakeSerialDriver.h"
#include "support/VirtualEventLoop.h"

namespace {

using vk32::App;
using vk32::Form;

constexpr int TitleHeight = 26, TitleFont = 13, TitleLeft = 10;  // pixels
constexpr char TitleBack[] = "#D9DDD6", TitleText[] = "#1E211D", FrameLine[] = "#868D83";

/// Draws a window in a plain frame with its title.
void Draw(QWidget& window, const QString& path) {
  const QPixmap inside = window.grab();
  QImage picture(inside.width() + 2, inside.height() + TitleHeight + 1, QImage::Format_RGB32);
  picture.fill(QColor(FrameLine));
  QPainter painter(&picture);
  const QRect title(1, 1, inside.width(), TitleHeight - 1);
  painter.fillRect(title, QColor(TitleBack));
  QFont font = QApplication::font();
  font.setPixelSize(TitleFont);
  painter.setFont(font);
  painter.setPen(QColor(TitleText));
  painter.drawText(title.adjusted(TitleLeft, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, window.windowTitle());
  painter.drawPixmap(1, TitleHeight, inside);
  painter.end();
  if (!picture.save(path)) throw std::runtime_error(path.toStdString() + " can't be written");
}

/// The desktop's windows, with the answers of a script.
class PictureScreen : public vk32::ScriptScreen {
 public:
  PictureScreen() : ScriptScreen([this](const std::string& line) { Take(line); }) {}

  void FormLoaded(Form& form) override { desktop.FormLoaded(form); }
  void FormShown(Form& form) override { desktop.FormShown(form); }
  void FormHidden(Form& form) override { desktop.FormHidden(form); }
  void FormUnloaded(Form& form) override { desktop.FormUnloaded(form); }
  vk32::Answer Ask(const vk32::MessageBoxRequest& request) override {
    if (!box.isEmpty() && request.text.starts_with(boxText)) {
      QTimer::singleShot(0, qApp, [path = std::exchange(box, {})] {
        QWidget* shown = QApplication::activeModalWidget();
        Draw(*shown, path);
        shown->close();
      });
      desktop.Ask(request);
    }
    return ScriptScreen::Ask(request);
  }

  vk32::DesktopScreen desktop;
  QString box;  // where the next box is drawn whose text begins with boxText; empty: nowhere
  std::string boxText;
  std::string failure;  // of a command

 private:
  void Take(const std::string& line) {
    if (line.starts_with("error") || line.starts_with("after-error") || line.starts_with("fault")) failure = line;
  }
};

/// A run of the program, with a simulated gateway behind each port from COM27 to COM32 and a silent one behind COM1.
class Session {
 public:
  explicit Session(QDir folder) : folder_(std::move(folder)) {
    int port = 27;
    for (const char* product : {"VK-RTX-Modbus", "RBCard", "VK-RTX-DF1", "VK5300", "RB3000", "RB2000"}) {
      gateways_.emplace_back(product, vk32::sim::Misbehaviour{}, true);
      driver_.Plug("COM" + std::to_string(port++), &gateways_.back());
    }
    driver_.Plug("COM1", nullptr);
    vk32::StartProgram(app_);
  }
  ~Session() {
    app_.forms.UnloadAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Run(const std::string& path) {
    std::ifstream lines(path);
    if (!lines) throw std::runtime_error(path + " can't be read");
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
      ++number;
      Take(line);
      QCoreApplication::processEvents();
      if (screen_.failure.empty()) continue;
      throw std::runtime_error(path + ":" + std::to_string(number) + ": " + screen_.failure);
    }
  }

 private:
  /// Three commands are its own: "picture NAME" draws the topmost window, "picture-in MS NAME" does so in the middle of
  /// what follows, and "box NAME TEXT" draws the next box that begins with TEXT. "caption LABEL TEXT" puts words where
  /// those of this machine stand.
  void Take(const std::string& line) {
    const std::size_t blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
    const std::size_t second = std::min(rest.find(' '), rest.size());
    const std::string first = rest.substr(0, second), behind = rest.substr(std::min(second + 1, rest.size()));
    if (command == "picture") {
      Picture(rest);
    } else if (command == "picture-in") {
      loop_.StartTimer(std::chrono::milliseconds(std::stoi(rest)), [this, name = behind] { Picture(name); });
    } else if (command == "box") {
      screen_.box = PathOf(first);
      screen_.boxText = behind;
    } else if (command == "caption") {
      Caption(first, behind);
    } else {
      session_.RunLine(line);
    }
  }
  QString PathOf(const std::string& name) const { return folder_.filePath(QString::fromStdString(name) + ".png"); }
  void Picture(const std::string& name) {
    QCoreApplication::processEvents();
    const auto& forms = app_.forms.Loaded();
    const auto top = std::find_if(forms.rbegin(), forms.rend(), [](const auto& form) { return form->Visible.Value(); });
    if (top == forms.rend()) throw std::runtime_error("no window shows for the picture " + name);
    Draw(*screen_.desktop.WindowOf(**top), PathOf(name));
  }
  void Caption(const std::string& label, const std::string& words) {
    const std::size_t point = label.find('.'), bracket = std::min(label.find('('), label.size());
    Form* form = app_.forms.Find(label.substr(0, point));
    std::optional<int> index;
    if (bracket < label.size()) index = std::stoi(label.substr(bracket + 1));
    auto* control =
        form ? dynamic_cast<vk32::Label*>(form->Find(label.substr(point + 1, bracket - point - 1), index)) : nullptr;
    if (!control) throw std::runtime_error("there is no label " + label);
    const auto text = vk32::Unquote(words);
    if (!text) throw std::runtime_error(words + " is malformed");
    control->Caption = *text;
    control->Visible = !text->empty();
  }

  QDir folder_;
  vk32::VirtualEventLoop loop_;
  std::deque<vk32::GatewayDevice> gateways_;
  PictureScreen screen_;
  vk32::FakeSerialDriver driver_{loop_};
  vk32::PortNames names_{"", "/nowhere", "/nowhere"};
  App app_{loop_, screen_, driver_, names_};
  vk32::ScriptSession session_{app_, screen_};
};

/// One that holds the largest window.
constexpr char Screens[] = R"({"screens": [{"name": "desktop", "x": 0, "y": 0, "width": 1600, "height": 1200,
 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

/// What scripts and the screen need lies in a folder of its own, which goes; so does what they save there.
class WorkFolder {
 public:
  WorkFolder() {
    if (!mkdtemp(path_.data())) throw std::runtime_error(path_ + " can't be made");
    std::filesystem::current_path(path_);
    std::ofstream("vk-rtx-2-15.rom") << std::string(8192, ':');
    std::ofstream("screens.json") << Screens;
  }
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::current_path("/", ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  const std::string& Path() const { return path_; }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

 private:
  std::string path_ = (std::filesystem::temp_directory_path() / "vk32-pictures-XXXXXX").string();
};

/// Does what the arguments say, which count from the folder `from`; the exit status.
int DrawAll(const QDir& from) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Draws the pictures of the manual by scripts (docs/manual/pictures).");
  const QCommandLineOption help = parser.addHelpOption();
  parser.addPositionalArgument("FOLDER", "Where the pictures go.");
  parser.addPositionalArgument("SCRIPT...", "What is done and drawn, each in a new run of the program.");
  const bool parsed = parser.parse(QCoreApplication::arguments());
  if (parsed && parser.isSet(help)) {
    std::fputs(qPrintable(parser.helpText()), stdout);
    return 0;
  }
  const QStringList places = parser.positionalArguments();
  if (!parsed || places.size() < 2 || !QDir(from.absoluteFilePath(places.front())).exists()) {
    const QString error = parsed ? "wants a FOLDER, which has to be there, and scripts" : parser.errorText();
    std::fprintf(stderr, "vk32-manual-pictures: %s\n", qPrintable(error));
    return 2;
  }
  const QDir folder(from.absoluteFilePath(places.front()));
  for (const QString& script : places.mid(1)) Session(folder).Run(from.absoluteFilePath(script).toStdString());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const QDir from(QDir::currentPath());
    const WorkFolder work;
    // Whatever the desktop is set to on which the manual is made, the pictures are the same.
    for (const char* setting : {"QT_SCALE_FACTOR", "QT_FONT_DPI", "DBUS_SESSION_BUS_ADDRESS"}) unsetenv(setting);
    setenv("XDG_RUNTIME_DIR", work.Path().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen:configfile=screens.json", 1);
    QApplication::setDesktopSettingsAware(false);
    const QApplication application(argc, argv);
    return DrawAll(from);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "vk32-manual-pictures: %s\n", problem.what());
    return 1;
  }
}
