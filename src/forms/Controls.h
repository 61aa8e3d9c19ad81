// The kinds of controls. Assigning a text, a value or a selection from code does what the user's act does: it runs the
// handler, every time, also when the value is the same.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/Control.h"
#include "forms/TextRows.h"
#include "platform/EventLoop.h"

namespace vk32 {

/// A frame holds other controls; it has no border, and its caption is not shown.
class Frame : public Control, public Container {
 public:
  Frame(const Container& container, ControlName name, Place place, Fill fill = Fill::None);

  Property<std::string> Caption;
  const Fill fill;
};

/// The events of a label or a form other than its click.
struct MouseHandlers {
  Handler Down, Up, Move;
};

class Label : public Control {
 public:
  Label(const Container& container, ControlName name, Place place, std::string caption, TextRole role = TextRole::Body,
        Handler click = {}, MouseHandlers mouse = {});

  std::string Words() const override { return Caption; }
  /// A click leads somewhere; the front end shows that it can be clicked and takes it into the tab order if it's a
  /// link.
  bool IsClickable() const { return static_cast<bool>(OnClick); }

  Act Press() override;
  Act Release() override;
  Act Click() override;

  Property<std::string> Caption;
  Handler OnClick, OnMouseDown, OnMouseUp;
  const TextRole role;
};

/// A line of a list to pick from. Its caption holds the texts of its columns, parted by tabs.
class RowLabel : public Label {
 public:
  struct Column {
    int left;  // twips, from the row's left edge; below 0: from its right one. Reaches to the next column
    TextRole role;
  };

  RowLabel(const Container& container, ControlName name, Place place, std::vector<Column> columns, Handler click);

  Property<bool> Chosen;
  const std::vector<Column> columns;
};

/// A picture that does nothing. A sign is 180 high in lines of small text, 360 at the end of an installation.
class Image : public Control {
 public:
  Image(const Container& container, ControlName name, Place place, Symbol symbol = Symbol::Icon);

  Property<Symbol> Picture;
};

/// Which key of the window presses a button, or leads to it.
enum class WindowKey { None, Enter, Escape, EscapeMovesFocus };

/// A button that shows a numbered picture. It is pressed and raised by one rule, from the table of pictures.
class ImageButton : public Control {
 public:
  /// Shows the raised picture that the table has for `name`.
  ImageButton(const Container& container, ControlName name, Place place, Handler click,
              WindowKey key = WindowKey::None);

  std::string Words() const override;

  Act Press() override;
  Act Release() override;
  Act Click() override;

  Property<int> Picture;
  Handler OnClick;
  WindowKey key;
};

class CommandButton : public Control {
 public:
  CommandButton(const Container& container, ControlName name, Place place, std::string caption, Handler click,
                WindowKey key = WindowKey::None);

  std::string Words() const override { return Caption; }

  Act Click() override;

  Property<std::string> Caption;
  Handler OnClick;
  const WindowKey key;
};

class VScrollBar;

/// What a box of many lines shows at a time.
struct Screenful {
  int columns = 80, rows = 24;
};

/// One line of text, or a box of many lines (the terminal).
class TextBox : public Control {
 public:
  enum class Lines { One, Many };
  /// Runs before a key gets into the text; gives false to keep it out.
  using KeyFilter = std::function<bool(char key)>;

  TextBox(const Container& container, ControlName name, Place place, Handler change = {}, Lines lines = Lines::One,
          Screenful screenful = {});

  std::string Words() const override { return Text; }

  Act Type(std::string_view text);   // replaces the whole text
  Act Key(char key);                 // puts one key in place of the selection
  Act Paste(std::string_view text);  // in place of the selection; a block: into the table from here on

  // Of a box of many lines: the user reads and takes with him, and changes nothing.
  Act ScrollTo(int row);            // as far as there are rows
  Act Mark(int start, int length);  // as far as there is text
  /// Gives what is marked to the clipboard; without a mark, marks all and gives that.
  Act Copy();
  std::string MarkedText() const;  // with its line ends
  const TextRows& Rows() const { return rows_; }
  /// The highest value of TopRow: the end of the text shows.
  int LastTopRow() const;
  /// Gives the box a bar that shows and moves its TopRow.
  void MovedBy(VScrollBar& bar);

  /// Puts a text in place of the selection and the cursor behind it. Costs what the change costs, however long the text
  /// is.
  void SetSelText(std::string_view text);
  /// The first position that has changed since this was last asked; the length of the text if nothing has.
  std::size_t TakeChange();

 private:
  void AssignText(const std::string& text);
  void AssignSelStart(const int& position);
  void AssignSelLength(const int& length);
  void AssignTopRow(const int& row);
  void Replace(std::size_t start, std::size_t length, std::string_view text);
  /// Follows a change of the text from that position on.
  void LayOut(std::size_t from);

  std::size_t changedFrom_ = 0;
  TextRows rows_;
  VScrollBar* bar_ = nullptr;

 public:
  ActiveProperty<std::string, TextBox, &TextBox::AssignText> Text;
  Property<bool> Locked;
  ActiveProperty<int, TextBox, &TextBox::AssignSelStart> SelStart;    // 0 to the length of the text
  ActiveProperty<int, TextBox, &TextBox::AssignSelLength> SelLength;  // never beyond the end
  /// The first row that shows, 0 to LastTopRow(). Follows the end of the text, unless the user has gone back.
  ActiveProperty<int, TextBox, &TextBox::AssignTopRow> TopRow;
  Property<int> MarkStart, MarkLength;  // what the user has marked
  Handler OnChange;
  KeyFilter OnKeyPress;
  const Lines lines;
  const Screenful screenful;
};

/// What the opened list tells of an entry beside its text.
struct EntryNote {
  std::string text;
  bool muted = false;  // there is little use in picking it

  bool operator==(const EntryNote&) const = default;
};
/// The texts, one a line.
std::string PropertyText(const std::vector<EntryNote>& notes);

/// A drop-down list.
class ComboBox : public Control {
 public:
  /// ChoiceWhenDone: keys only move the choice; it is made by Enter, a click in the opened list, or leaving the list.
  /// For a handler that is too dear for each step.
  enum class Style { ChoiceAlone, ChoiceWhenDone, WithTextPart };

  ComboBox(const Container& container, ControlName name, Place place, std::vector<std::string> entries, Handler click,
           Style style = Style::ChoiceAlone);

  std::string Words() const override { return Text; }
  const std::vector<std::string>& Entries() const { return entries_; }
  /// Takes new entries and clears the selection; runs nothing.
  void SetEntries(std::vector<std::string> entries);
  /// Shows the entry without running the handler: an earlier choice is told, not made. No such entry: does nothing.
  void Show(const std::string& entry);
  /// The tool tip of an entry, asked for when it is shown. None by default.
  std::function<std::string(const std::string& entry)> EntryToolTip;

  // A locked list takes neither.
  Act Pick(std::string_view entry);
  Act Type(std::string_view text);  // into the text part

 private:
  void AssignText(const std::string& text);
  void AssignListIndex(const int& index);
  void Select(std::size_t index);
  std::size_t IndexOf(std::string_view entry) const;

 public:
  /// An entry's text selects it and runs the click handler; the empty text clears the selection, any other leaves it,
  /// and both run nothing. With a text part every text stands; the handler runs for entries alone.
  ActiveProperty<std::string, ComboBox, &ComboBox::AssignText> Text;
  ActiveProperty<int, ComboBox, &ComboBox::AssignListIndex> ListIndex;  // from 0; -1: none. Beyond: fault 5
  Property<bool> Locked;
  Property<std::vector<EntryNote>> Notes;  // by the index of the entry; none for those beyond the end
  Property<int> ListWidth;                 // of the opened list, twips, to the left; 0: as wide as the field
  Handler OnClick;
  const Style style;

 private:
  std::vector<std::string> entries_;
};

class CheckBox : public Control {
 public:
  CheckBox(const Container& container, ControlName name, Place place, std::string caption, Handler click = {});

  std::string Words() const override { return Caption; }

  Act Click() override;  // toggles

 private:
  void AssignValue(const int& value);

 public:
  Property<std::string> Caption;
  ActiveProperty<int, CheckBox, &CheckBox::AssignValue> Value;  // 0 or 1, else fault 5
  Handler OnClick;
};

/// Of the options that lie in the same container one is selected.
class OptionButton : public Control {
 public:
  OptionButton(const Container& container, ControlName name, Place place, std::string caption, bool value,
               Handler click = {});

  std::string Words() const override { return Caption; }

  Act Click() override;

 private:
  void AssignValue(const bool& value);

 public:
  Property<std::string> Caption;
  /// Selecting it clears the others and runs its handler; clearing it runs nothing.
  ActiveProperty<bool, OptionButton, &OptionButton::AssignValue> Value;
  Handler OnClick;
};

class VScrollBar : public Control {
 public:
  /// `ground`: the area that it moves, in whose look it is drawn.
  VScrollBar(const Container& container, ControlName name, Place place, Handler change, Fill ground = Fill::Table);

  Act Scroll(int value);

 private:
  void AssignValue(const int& value);
  void AssignMax(const int& max);

 public:
  Property<int> Min;
  ActiveProperty<int, VScrollBar, &VScrollBar::AssignMax> Max;      // below Value: Value follows, with its handler
  ActiveProperty<int, VScrollBar, &VScrollBar::AssignValue> Value;  // Min to Max, else fault 5
  Property<int> SmallChange, LargeChange;
  Handler OnChange;
  const Fill ground;
};

class ProgressBar : public Control {
 public:
  ProgressBar(const Container& container, ControlName name, Place place);

 private:
  void AssignValue(const int& value);

 public:
  Property<int> Min, Max;
  ActiveProperty<int, ProgressBar, &ProgressBar::AssignValue> Value;  // Min to Max, else fault 5
};

/// Ticks each time its interval has passed, from the moment it was enabled.
class Timer : public Control {
 public:
  Timer(Form& form, ControlName name, int interval, bool enabled, Handler tick);
  ~Timer() override;

  /// Leaves out the ticks to come until `fd` can be read; -1: until it is enabled anew.
  void SleepUntilReadable(int fd);

 private:
  void AssignInterval(const int& milliseconds);
  void AssignEnabled(const bool& enabled);
  void Restart();
  void Arm(Time delay);
  void Tick();

  Time due_{};
  TimerQueue::Id running_ = 0;

 public:
  ActiveProperty<int, Timer, &Timer::AssignInterval> Interval;  // ms; 0 never ticks
  /// Assigning True starts a full interval anew, always. Hides the flag of the other controls on purpose.
  ActiveProperty<bool, Timer, &Timer::AssignEnabled> Enabled;
  Handler OnTimer;
};

/// A common file dialog of the platform.
class FileDialog : public Control {
 public:
  FileDialog(Form& form, ControlName name);

  /// Sets the title and the filter; no file name yet, and a cancel gives no fault.
  void Prepare(const std::string& title, const std::string& filter);
  /// Asks, and puts the chosen path into FileName; on a cancel FileName stays as it is.
  void ShowOpen();
  void ShowSave();

  Property<std::string> DialogTitle;
  Property<std::string> Filter;  // description|pattern pairs, joined by |
  Property<std::string> FileName;
  Property<bool> CancelError;  // False: a cancel is no fault

 private:
  void Show(bool save);
};

}  // namespace vk32
