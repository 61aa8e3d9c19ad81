// The commands of the text front end.
#include "script/ScriptSession.h"

#include <charconv>
#include <map>
#include <optional>
#include <utility>

#include "forms/Tables.h"
#include "script/Quoting.h"

namespace vk32 {
namespace {

/// Cuts the first word off; the rest begins behind one blank.
std::string_view TakeWord(std::string_view& text) {
  const std::size_t blank = text.find(' ');
  const std::string_view word = text.substr(0, blank);
  text = blank == std::string_view::npos ? std::string_view() : text.substr(blank + 1);
  return word;
}

std::optional<int> ParseInt(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

bool ScriptSession::RunLine(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.find_first_not_of(" \t") == std::string_view::npos || line.front() == '#') return true;
  // What has failed since the last command stops a script ahead of this one; RunEnd tells it behind `quit`.
  std::string failure = underWay_ || line == "quit" ? "" : screen_.ExchangeFailure();
  failure = failure.empty() ? Run(line) : "not carried out: " + failure;
  screen_.Print(failure.empty() ? "ok" : "error " + failure);
  return failure.empty();
}

bool ScriptSession::RunEnd() {
  std::string failure = screen_.ExchangeFailure();
  const auto missing = screen_.Missing();
  if (failure.empty() && missing) failure = "no box has come with " + Quote(*missing);
  if (!failure.empty()) screen_.Print("error " + failure);
  return failure.empty();
}

std::string ScriptSession::Run(std::string_view line) {
  // A command run by `after` must not take the blame from, or leave it to, the one that it runs in.
  const std::string outer = screen_.ExchangeFailure();
  const bool inner = std::exchange(underWay_, true);
  std::string failure;
  try {
    const std::string_view name = TakeWord(line);
    const Command command = FindCommand(name);
    if (!command) throw Refused("unknown command " + std::string(name));
    (this->*command)(line);
  } catch (const Refused& refused) {
    failure = refused.what();
  }
  underWay_ = inner;
  const std::string asked = screen_.ExchangeFailure(outer);
  if (failure.empty()) failure = asked;
  if (failure.empty() && screen_.Faulted()) failure = "the program ended by a fault";
  return failure;
}

ScriptSession::Command ScriptSession::FindCommand(std::string_view name) {
  static const std::map<std::string_view, Command> commands{
      {"click", &ScriptSession::Click},
      {"down", &ScriptSession::Down},
      {"up", &ScriptSession::Up},
      {"select", &ScriptSession::Select},
      {"type", &ScriptSession::Type},
      {"keys", &ScriptSession::Keys},
      {"press", &ScriptSession::Press},
      {"paste", &ScriptSession::Paste},
      {"check", &ScriptSession::Check},
      {"scroll", &ScriptSession::Scroll},
      {"move", &ScriptSession::Move},
      {"help", &ScriptSession::Help},
      {"get", &ScriptSession::Get},
      {"items", &ScriptSession::Items},
      {"forms", &ScriptSession::ListForms},
      {"controls", &ScriptSession::Controls},
      {"answer", &ScriptSession::AnswerBox},
      {"expect", &ScriptSession::Expect},
      {"confirm", &ScriptSession::Confirm},
      {"file", &ScriptSession::File},
      {"wait", &ScriptSession::Wait},
      {"until", &ScriptSession::Until},
      {"after", &ScriptSession::After},
      {"quit", &ScriptSession::Quit},
  };
  const auto command = commands.find(name);
  return command == commands.end() ? nullptr : command->second;
}

// The acts

void ScriptSession::Click(std::string_view arguments) {
  const Target target = TurnTo(arguments);
  if (!target.control) {
    Require(target.form->Click(), target);
    return;
  }
  Require(target.control->Press(), target);
  target.control->Release();
  target.control->Click();
}

void ScriptSession::Down(std::string_view arguments) {
  const Target target = Resolve(arguments);
  Require(ControlOf<Control>(target).Press(), target);
}

void ScriptSession::Up(std::string_view arguments) {
  const Target target = Resolve(arguments);
  Require(ControlOf<Control>(target).Release(), target);
}

void ScriptSession::Select(std::string_view arguments) {
  const Target target = TurnTo(TakeWord(arguments));
  Require(ControlOf<ComboBox>(target).Pick(TextOf(arguments)), target);
}

void ScriptSession::Type(std::string_view arguments) {
  const Target target = TurnTo(TakeWord(arguments));
  const std::string text = TextOf(arguments);
  auto* list = dynamic_cast<ComboBox*>(target.control);
  Require(list ? list->Type(text) : ControlOf<TextBox>(target).Type(text), target);
}

void ScriptSession::Keys(std::string_view arguments) {
  const Target target = TurnTo(TakeWord(arguments));
  for (const char key : TextOf(arguments)) Require(ControlOf<TextBox>(target).Key(key), target);
}

void ScriptSession::Press(std::string_view arguments) {
  static const std::map<std::string_view, TableKey> keys{{"Up", TableKey::Up},         {"Down", TableKey::Down},
                                                         {"PageUp", TableKey::PageUp}, {"PageDown", TableKey::PageDown},
                                                         {"Home", TableKey::Home},     {"End", TableKey::End},
                                                         {"Enter", TableKey::Enter},   {"Delete", TableKey::Delete},
                                                         {"Undo", TableKey::Undo}};
  const Target target = TurnTo(TakeWord(arguments));
  const auto key = keys.find(arguments);
  if (key == keys.end()) throw Refused("press takes Up, Down, PageUp, PageDown, Home, End, Enter, Delete or Undo");
  Require(ControlOf<Control>(target).Navigate(key->second), target);
}

void ScriptSession::Paste(std::string_view arguments) {
  const Target target = TurnTo(TakeWord(arguments));
  const std::string text = TextOf(arguments);
  auto* field = dynamic_cast<TextBox*>(target.control);
  Require(field ? field->Paste(text) : ControlOf<Control>(target).PasteBlock(text), target);
}

void ScriptSession::Check(std::string_view arguments) {
  const Target target = TurnTo(TakeWord(arguments));
  auto& check = ControlOf<CheckBox>(target);
  if (arguments != "on" && arguments != "off") throw Refused("check takes on or off");
  const int wanted = arguments == "on" ? 1 : 0;
  if (check.Value != wanted) Require(check.Click(), target);
}

void ScriptSession::Scroll(std::string_view arguments) {
  const Target target = Resolve(TakeWord(arguments));
  const auto value = ParseInt(arguments);
  auto& bar = ControlOf<VScrollBar>(target);
  if (!value || *value < bar.Min || *value > bar.Max) throw Refused("scroll takes a number from Min to Max");
  Require(bar.Scroll(*value), target);
}

void ScriptSession::Move(std::string_view arguments) {
  const Target target = Resolve(arguments);
  if (target.control) {
    target.control->MouseMove();
  } else {
    target.form->MouseMove();
  }
}

void ScriptSession::Help(std::string_view arguments) {
  const Target target = Resolve(arguments);
  Require(target.form->Help(), target);
}

// The questions

void ScriptSession::Get(std::string_view arguments) { screen_.Print("value " + Quote(PropertyText(arguments))); }

void ScriptSession::Items(std::string_view arguments) {
  const Target target = Resolve(arguments);
  for (const std::string& entry : ControlOf<ComboBox>(target).Entries()) screen_.Print("item " + Quote(entry));
}

void ScriptSession::ListForms(std::string_view) {
  for (const auto& form : app_.forms.Loaded()) {
    screen_.Print(std::string("form ") + form->Name() + (form->Visible ? " visible" : " hidden"));
  }
}

void ScriptSession::Controls(std::string_view arguments) {
  const auto form = LoadedForm(arguments);
  for (const Control* control : form->Controls()) {
    screen_.Print("control " + control->FullName() + " " + std::string(control->KindName()) + " " +
                  Quote(control->Words()) + (control->Shown() ? " shown" : " hidden"));
  }
}

// What is prepared, and time

void ScriptSession::AnswerBox(std::string_view arguments) {
  const std::pair<std::string_view, Answer> answers[] = {{"yes", Answer::Yes},
                                                         {"no", Answer::No},
                                                         {"save", Answer::Save},
                                                         {"discard", Answer::Discard},
                                                         {"cancel", Answer::Cancel}};
  for (const auto& [word, answer] : answers) {
    if (arguments == word) return screen_.QueueAnswer(answer);
  }
  throw Refused("answer takes yes, no, save, discard or cancel");
}

void ScriptSession::Expect(std::string_view arguments) {
  if (arguments.empty()) throw Refused("expect takes the text of a box, or its beginning");
  screen_.QueueExpected(TextOf(arguments));
}

void ScriptSession::Confirm(std::string_view) {
  if (!screen_.WaitForEnter) throw Refused("there is no terminal at which Enter could be pressed");
  screen_.QueueConfirm();
}

void ScriptSession::File(std::string_view arguments) {
  if (arguments == "cancel") {
    screen_.QueueFile(std::nullopt);
  } else {
    screen_.QueueFile(TextOf(arguments));
  }
}

void ScriptSession::Wait(std::string_view arguments) {
  LetEventsRun(Milliseconds(arguments), [] { return false; });
}

void ScriptSession::Until(std::string_view arguments) {
  const std::string path(TakeWord(arguments));
  const int milliseconds = Milliseconds(TakeWord(arguments));
  const std::string wanted = TextOf(arguments);
  std::string last;
  const auto done = [&] {
    try {
      last = Quote(PropertyText(path));
      return last == Quote(wanted);
    } catch (const Refused& refused) {
      last = refused.what();  // its form may be loaded yet
      return false;
    }
  };
  if (!LetEventsRun(milliseconds, done)) throw Refused(path + " did not become " + Quote(wanted) + ": " + last);
}

void ScriptSession::After(std::string_view arguments) {
  const int milliseconds = Milliseconds(TakeWord(arguments));
  app_.forms.dispatcher.Loop().StartTimer(std::chrono::milliseconds(milliseconds),
                                          [this, line = std::string(arguments)] {
                                            const std::string failure = Run(line);
                                            if (failure.empty()) return;
                                            afterFailed_ = true;
                                            screen_.Print("after-error " + failure);
                                          });
}

void ScriptSession::Quit(std::string_view) { quit_ = true; }

bool ScriptSession::LetEventsRun(int milliseconds, const std::function<bool()>& done) {
  EventLoop& loop = app_.forms.dispatcher.Loop();
  bool over = false;
  const auto alarm = loop.StartTimer(std::chrono::milliseconds(milliseconds), [&] { over = true; });
  bool reached = done();
  while (!reached && !over && !Finished()) {
    loop.Wait(-1);
    loop.RunDue();
    reached = done();
  }
  loop.StopTimer(alarm);
  return reached;
}

// Names

std::shared_ptr<Form> ScriptSession::LoadedForm(std::string_view name) const {
  for (const auto& form : app_.forms.Loaded()) {
    if (name == form->Name()) return form;
  }
  throw Refused("no form " + std::string(name) + " is loaded");
}

ScriptSession::Target ScriptSession::Resolve(std::string_view name) const {
  const std::size_t point = name.find('.');
  Target target{LoadedForm(name.substr(0, point)), nullptr, std::string(name)};
  if (point == std::string_view::npos) return target;
  std::string_view control = name.substr(point + 1);
  std::optional<int> index;
  if (const std::size_t bracket = control.find('('); bracket != std::string_view::npos && control.back() == ')') {
    index = ParseInt(control.substr(bracket + 1, control.size() - bracket - 2));
    if (!index) throw Refused("no number in " + std::string(name));
    control = control.substr(0, bracket);
  }
  target.control = target.form->Find(control, index);
  if (!target.control) throw Refused("there is no control " + std::string(name));
  return target;
}

ScriptSession::Target ScriptSession::TurnTo(std::string_view name) const {
  Target target = Resolve(name);
  if (target.control && target.control->Shown()) target.form->FocusMoved(target.control);
  return target;
}

template <class T>
T& ScriptSession::ControlOf(const Target& target) const {
  if (auto* control = dynamic_cast<T*>(target.control)) return *control;
  throw Refused(target.name + " does not take this command");
}

std::string ScriptSession::PropertyText(std::string_view path) const {
  const std::size_t point = path.rfind('.');
  if (point == std::string_view::npos) throw Refused("no property in " + std::string(path));
  const Target target = Resolve(path.substr(0, point));
  const std::string_view name = path.substr(point + 1);
  if (name == "Shown") {
    const bool shown = target.control ? target.control->Shown() : target.form->Visible.Value();
    return shown ? "True" : "False";
  }
  const Element& element = target.control ? static_cast<Element&>(*target.control) : *target.form;
  if (const PropertyBase* property = element.FindProperty(name)) return property->AsText();
  throw Refused(target.name + " has no property " + std::string(name));
}

void ScriptSession::Require(Act act, const Target& target) {
  switch (act) {
    case Act::Done: return;
    case Act::Hidden: throw Refused(target.name + " can't be seen");
    case Act::Disabled: throw Refused(target.name + " is disabled");
    case Act::Locked: throw Refused(target.name + " is locked");
    case Act::NoSuchEntry: throw Refused(target.name + " has no such entry");
    case Act::NotThisKind: throw Refused(target.name + " does not take this command");
    case Act::Refused: throw Refused(target.name + " does not take this text");
  }
}

int ScriptSession::Milliseconds(std::string_view text) {
  const auto value = ParseInt(text);
  if (!value || *value < 0) throw Refused("a number of milliseconds is missing");
  return *value;
}

std::string ScriptSession::TextOf(std::string_view argument) {
  if (auto text = Unquote(argument)) return *std::move(text);
  throw Refused("the text in double quotes is malformed");
}

}  // namespace vk32
