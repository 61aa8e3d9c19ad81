// How each kind of control behaves.
#include "forms/Controls.h"

#include <algorithm>
#include <utility>

#include "forms/Forms.h"
#include "forms/Tables.h"
#include "resources/Pictures.h"

namespace vk32 {

Frame::Frame(const Container& container, ControlName name, Place place, Fill fill_)
    : Control(Kind::Frame, container, name, place),
      Container(container.OwnerForm(), this),
      Caption(*this, "Caption", {}),
      fill(fill_) {}

Label::Label(const Container& container, ControlName name, Place place, std::string caption, TextRole role_,
             Handler click, MouseHandlers mouse)
    : Control(Kind::Label, container, name, place),
      Caption(*this, "Caption", std::move(caption)),
      OnClick(std::move(click)),
      OnMouseDown(std::move(mouse.Down)),
      OnMouseUp(std::move(mouse.Up)),
      role(role_) {
  OnMouseMove = std::move(mouse.Move);
}

Act Label::Press() {
  return Perform([this] { Raise(OnMouseDown); });
}

Act Label::Release() {
  return Perform([this] { Raise(OnMouseUp); });
}

Act Label::Click() {
  // A front end without a pointer clicks on a cell where another one clicks somewhere in the row.
  RowTable* table = RowTableAround(*this);
  if (const int row = table ? table->RowOf(*this) : 0; row > 0) table->ClickRow(row);
  return Perform([this] { Raise(OnClick); });
}

RowLabel::RowLabel(const Container& container, ControlName name, Place place, std::vector<Column> columns_,
                   Handler click)
    : Label(container, name, place, "", TextRole::TableText, std::move(click)),
      Chosen(*this, "Chosen", false),
      columns(std::move(columns_)) {}

Image::Image(const Container& container, ControlName name, Place place, Symbol symbol)
    : Control(Kind::Image, container, name, place), Picture(*this, "Picture", symbol) {}

ImageButton::ImageButton(const Container& container, ControlName name, Place place, Handler click, WindowKey key_)
    : Control(Kind::ImageButton, container, name, place),
      Picture(*this, "Picture", 0),
      OnClick(std::move(click)),
      key(key_) {
  if (const auto* row = FindPictureButton(name.name)) Picture = row->raised;
}

std::string ImageButton::Words() const {
  const auto* row = FindPicture(Picture);
  return row ? std::string(row->words) : std::string();
}

Act ImageButton::Press() {
  return Perform([this] { Picture = PressedPicture(Picture); });
}

Act ImageButton::Release() {
  // Also when the button has been hidden or disabled since: up always restores.
  Picture = RaisedPicture(Picture);
  return Act::Done;
}

Act ImageButton::Click() {
  return Perform([this] { Raise(OnClick); });
}

CommandButton::CommandButton(const Container& container, ControlName name, Place place, std::string caption,
                             Handler click, WindowKey key_)
    : Control(Kind::CommandButton, container, name, place),
      Caption(*this, "Caption", std::move(caption)),
      OnClick(std::move(click)),
      key(key_) {}

Act CommandButton::Click() {
  return Perform([this] { Raise(OnClick); });
}

TextBox::TextBox(const Container& container, ControlName name, Place place, Handler change, Lines lines_,
                 Screenful screenful_)
    : Control(Kind::TextBox, container, name, place),
      rows_(static_cast<std::size_t>(screenful_.columns)),
      Text(*this, "Text", {}),
      Locked(*this, "Locked", false),
      SelStart(*this, "SelStart", 0),
      SelLength(*this, "SelLength", 0),
      TopRow(*this, "TopRow", 0),
      MarkStart(*this, "MarkStart", 0),
      MarkLength(*this, "MarkLength", 0),
      OnChange(std::move(change)),
      lines(lines_),
      screenful(screenful_) {}

Act TextBox::Type(std::string_view text) {
  if (Locked) return Act::Locked;
  return Perform([&] { AssignText(std::string(text)); });
}

Act TextBox::Key(char key) {
  if (Locked) return Act::Locked;
  return Perform([&] {
    if (OnKeyPress && !OnKeyPress(key)) return;
    const auto start = static_cast<std::size_t>(SelStart.Value());
    const auto length = static_cast<std::size_t>(SelLength.Value());
    if (key == '\b') {
      const std::size_t back = length == 0 && start > 0 ? 1 : 0;
      Replace(start - back, length + back, {});
    } else if (static_cast<unsigned char>(key) >= ' ') {
      Replace(start, length, std::string_view(&key, 1));
    }
  });
}

Act TextBox::Paste(std::string_view text) {
  if (IsBlock(text)) return PasteBlock(text);
  if (Locked) return Act::Locked;
  return Perform([&] { SetSelText(text); });
}

void TextBox::Replace(std::size_t start, std::size_t length, std::string_view text) {
  changedFrom_ = std::min(changedFrom_, start);
  Text.Change([&](std::string& value) { value.replace(start, length, text); });
  LayOut(start);
  SelLength.Set(0);
  SelStart.Set(static_cast<int>(start + text.size()));
  Raise(OnChange);
}

void TextBox::SetSelText(std::string_view text) {
  Replace(static_cast<std::size_t>(SelStart.Value()), static_cast<std::size_t>(SelLength.Value()), text);
}

std::size_t TextBox::TakeChange() { return std::exchange(changedFrom_, Text.Value().size()); }

void TextBox::AssignText(const std::string& text) {
  changedFrom_ = 0;
  Text.Set(text);
  LayOut(0);
  SelLength.Set(0);
  SelStart.Set(static_cast<int>(text.size()));
  Raise(OnChange);
}

void TextBox::AssignSelStart(const int& position) {
  if (position < 0) throw RuntimeFault(RuntimeFault::InvalidCall);
  SelStart.Set(std::min(position, static_cast<int>(Text.Value().size())));
  AssignSelLength(SelLength);
}

void TextBox::AssignSelLength(const int& length) {
  if (length < 0) throw RuntimeFault(RuntimeFault::InvalidCall);
  SelLength.Set(std::min(length, static_cast<int>(Text.Value().size()) - SelStart));
}

void TextBox::LayOut(std::size_t from) {
  if (lines == Lines::One) return;
  const bool atEnd = TopRow == LastTopRow();
  rows_.Follow(Text, from);
  if (from < static_cast<std::size_t>(MarkStart + MarkLength)) {
    MarkStart = 0;
    MarkLength = 0;
  }
  if (bar_) bar_->Max = LastTopRow();
  AssignTopRow(atEnd ? LastTopRow() : TopRow.Value());
}

int TextBox::LastTopRow() const { return std::max(0, rows_.Count() - screenful.rows); }

void TextBox::AssignTopRow(const int& row) {
  TopRow.Set(std::clamp(row, 0, LastTopRow()));
  if (bar_ && bar_->Value != TopRow) bar_->Value = TopRow.Value();
}

void TextBox::MovedBy(VScrollBar& bar) {
  bar_ = &bar;
  bar.LargeChange = screenful.rows - 1;
  bar.OnChange = Handler([this] {
    if (TopRow != bar_->Value) AssignTopRow(bar_->Value);
  });
}

Act TextBox::ScrollTo(int row) {
  return Perform([&] { AssignTopRow(row); });
}

Act TextBox::Mark(int start, int length) {
  return Perform([&] {
    const int end = static_cast<int>(Text.Value().size());
    MarkStart = std::clamp(start, 0, end);
    MarkLength = std::clamp(length, 0, end - MarkStart);
  });
}

Act TextBox::Copy() {
  if (MarkLength == 0) Mark(0, static_cast<int>(Text.Value().size()));
  return Perform([this] { OwnerForm().Registry().GetScreen().CopyText(MarkedText()); });
}

std::string TextBox::MarkedText() const {
  return Text.Value().substr(static_cast<std::size_t>(MarkStart.Value()), static_cast<std::size_t>(MarkLength.Value()));
}

std::string PropertyText(const std::vector<EntryNote>& notes) {
  std::string text;
  for (const EntryNote& note : notes) text += note.text + '\n';
  return text;
}

ComboBox::ComboBox(const Container& container, ControlName name, Place place, std::vector<std::string> entries,
                   Handler click, Style style_)
    : Control(Kind::ComboBox, container, name, place),
      Text(*this, "Text", {}),
      ListIndex(*this, "ListIndex", -1),
      Locked(*this, "Locked", false),
      Notes(*this, "Notes", {}),
      ListWidth(*this, "ListWidth", 0),
      OnClick(std::move(click)),
      style(style_),
      entries_(std::move(entries)) {}

void ComboBox::SetEntries(std::vector<std::string> entries) {
  entries_ = std::move(entries);
  ListIndex.Set(-1);
  Text.Set({});
}

void ComboBox::Show(const std::string& entry) {
  const std::size_t index = IndexOf(entry);
  if (index == entries_.size()) return;
  ListIndex.Set(static_cast<int>(index));
  Text.Set(entry);
}

Act ComboBox::Pick(std::string_view entry) {
  if (Locked) return Act::Locked;
  const std::size_t index = IndexOf(entry);
  bool found = index < entries_.size();
  const Act act = Perform([&] {
    if (found) Select(index);
  });
  return act == Act::Done && !found ? Act::NoSuchEntry : act;
}

Act ComboBox::Type(std::string_view text) {
  if (style != Style::WithTextPart) return Act::NotThisKind;
  if (Locked) return Act::Locked;
  return Perform([&] { AssignText(std::string(text)); });
}

void ComboBox::AssignText(const std::string& text) {
  const std::size_t index = IndexOf(text);
  if (index < entries_.size()) {
    Select(index);
  } else if (text.empty() || style == Style::WithTextPart) {
    ListIndex.Set(-1);
    Text.Set(text);
  }
}

void ComboBox::AssignListIndex(const int& index) {
  if (index < -1 || index >= static_cast<int>(entries_.size())) throw RuntimeFault(RuntimeFault::InvalidCall);
  if (index == -1) {
    AssignText({});
  } else {
    Select(static_cast<std::size_t>(index));
  }
}

void ComboBox::Select(std::size_t index) {
  ListIndex.Set(static_cast<int>(index));
  Text.Set(entries_[index]);
  Raise(OnClick);
}

std::size_t ComboBox::IndexOf(std::string_view entry) const {
  return static_cast<std::size_t>(std::find(entries_.begin(), entries_.end(), entry) - entries_.begin());
}

CheckBox::CheckBox(const Container& container, ControlName name, Place place, std::string caption, Handler click)
    : Control(Kind::CheckBox, container, name, place),
      Caption(*this, "Caption", std::move(caption)),
      Value(*this, "Value", 0),
      OnClick(std::move(click)) {}

Act CheckBox::Click() {
  return Perform([this] { AssignValue(1 - Value); });
}

void CheckBox::AssignValue(const int& value) {
  if (value != 0 && value != 1) throw RuntimeFault(RuntimeFault::InvalidCall);
  Value.Set(value);
  Raise(OnClick);
}

OptionButton::OptionButton(const Container& container, ControlName name, Place place, std::string caption, bool value,
                           Handler click)
    : Control(Kind::OptionButton, container, name, place),
      Caption(*this, "Caption", std::move(caption)),
      Value(*this, "Value", value),
      OnClick(std::move(click)) {}

Act OptionButton::Click() {
  return Perform([this] { AssignValue(true); });
}

void OptionButton::AssignValue(const bool& value) {
  if (!value) {
    Value.Set(false);
    return;
  }
  for (Control* control : OwnerForm().Controls()) {
    auto* other = dynamic_cast<OptionButton*>(control);
    if (other && other != this && other->Parent() == Parent()) other->Value.Set(false);
  }
  Value.Set(true);
  Raise(OnClick);
}

VScrollBar::VScrollBar(const Container& container, ControlName name, Place place, Handler change, Fill ground_)
    : Control(Kind::VScrollBar, container, name, place),
      Min(*this, "Min", 0),
      Max(*this, "Max", 0),
      Value(*this, "Value", 0),
      SmallChange(*this, "SmallChange", 1),
      LargeChange(*this, "LargeChange", 1),
      OnChange(std::move(change)),
      ground(ground_) {}

Act VScrollBar::Scroll(int value) {
  return Perform([&] { AssignValue(std::clamp(value, Min.Value(), std::max(Min.Value(), Max.Value()))); });
}

void VScrollBar::AssignValue(const int& value) {
  if (value < Min || value > Max) throw RuntimeFault(RuntimeFault::InvalidCall);
  Value.Set(value);
  Raise(OnChange);
}

void VScrollBar::AssignMax(const int& max) {
  Max.Set(max);
  if (Value > max) AssignValue(max);
}

ProgressBar::ProgressBar(const Container& container, ControlName name, Place place)
    : Control(Kind::ProgressBar, container, name, place),
      Min(*this, "Min", 0),
      Max(*this, "Max", 100),
      Value(*this, "Value", 0) {}

void ProgressBar::AssignValue(const int& value) {
  if (value < Min || value > Max) throw RuntimeFault(RuntimeFault::InvalidCall);
  Value.Set(value);
}

Timer::Timer(Form& form, ControlName name, int interval, bool enabled, Handler tick)
    : Control(Kind::Timer, form, name, {}),
      Interval(*this, "Interval", interval),
      Enabled(*this, "Enabled", enabled),
      OnTimer(std::move(tick)) {
  Restart();
}

Timer::~Timer() { OwnerForm().Registry().dispatcher.Loop().StopTimer(running_); }

void Timer::AssignInterval(const int& milliseconds) {
  if (milliseconds < 0) throw RuntimeFault(RuntimeFault::InvalidCall);
  Interval.Set(milliseconds);
  Restart();
}

void Timer::AssignEnabled(const bool& enabled) {
  Enabled.Set(enabled);
  Restart();
}

void Timer::Restart() {
  EventLoop& loop = OwnerForm().Registry().dispatcher.Loop();
  loop.StopTimer(running_);
  running_ = 0;
  if (!Enabled || Interval == 0) return;
  const Time interval = std::chrono::milliseconds(Interval.Value());
  due_ = loop.Now() + interval;
  Arm(interval);
}

void Timer::Arm(Time delay) {
  running_ = OwnerForm().Registry().dispatcher.Loop().StartTimer(delay, [this] { Tick(); });
}

void Timer::SleepUntilReadable(int fd) {
  EventLoop& loop = OwnerForm().Registry().dispatcher.Loop();
  loop.StopTimer(running_);
  running_ = loop.StartWhenReadable(fd, [this] { Tick(); });
}

void Timer::Tick() {
  Dispatcher& dispatcher = OwnerForm().Registry().dispatcher;
  const Time interval = std::chrono::milliseconds(Interval.Value());
  const Time now = dispatcher.Loop().Now();
  // Ticks keep their raster; those that came too late to be of use are left out.
  due_ += interval * ((now - due_) / interval + 1);
  Arm(due_ - now);
  dispatcher.Dispatch([this] { Raise(OnTimer); });
}

FileDialog::FileDialog(Form& form, ControlName name)
    : Control(Kind::FileDialog, form, name, {}),
      DialogTitle(*this, "DialogTitle", {}),
      Filter(*this, "Filter", {}),
      FileName(*this, "FileName", {}),
      CancelError(*this, "CancelError", false) {}

void FileDialog::Prepare(const std::string& title, const std::string& filter) {
  DialogTitle = title;
  Filter = filter;
  FileName = "";
  CancelError = false;
}

void FileDialog::ShowOpen() { Show(false); }

void FileDialog::ShowSave() { Show(true); }

void FileDialog::Show(bool save) {
  const auto kind = save ? FileDialogRequest::Kind::Save : FileDialogRequest::Kind::Open;
  if (const auto path = OwnerForm().Registry().AskFile({kind, DialogTitle, Filter})) FileName = *path;
}

}  // namespace vk32
