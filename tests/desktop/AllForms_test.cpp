// Every form of the program is drawn: each control where it stands, no text cut off, each one with a name.
#include <algorithm>

#include "DesktopTest.h"
#include "LabelWidget.h"
#include "Text.h"
#include "resources/Pictures.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

constexpr int ListTextLeft = 8, ListButtonWidth = 24, MarkTextLeft = 22, ButtonMargin = 8;

/// It, or the text part of it.
bool LiesOnTop(const FormWindow& window, const QWidget& widget, QPoint at) {
  const QWidget* top = window.childAt(at);
  return top == &widget || widget.isAncestorOf(top);
}

int WidthOf(const std::string& words, const Theme& theme) {
  return QFontMetrics(theme.Font(TextRole::Body)).horizontalAdvance(FromBytes(words));
}

void ExpectNothingCutOff(const Control& control, const QWidget& widget, const Theme& theme) {
  if (const auto* label = dynamic_cast<const LabelWidget*>(&widget)) {
    EXPECT_FALSE(label->Block().IsCut());
    EXPECT_LE(label->Block().Width(), label->width());
    EXPECT_LE(label->Block().Height(), label->height() + 2);
  } else if (const auto* list = dynamic_cast<const ComboBox*>(&control)) {
    for (const std::string& entry : list->Entries()) {
      EXPECT_LE(WidthOf(entry, theme) + ListTextLeft + ListButtonWidth, widget.width()) << entry;
    }
  } else if (const auto* button = dynamic_cast<const CommandButton*>(&control)) {
    EXPECT_LE(WidthOf(button->Caption, theme) + 2 * ButtonMargin, widget.width());
  } else if (const auto* picture = dynamic_cast<const ImageButton*>(&control)) {
    const PictureButtonRow* row = FindPicture(picture->Picture);
    EXPECT_TRUE(!row || widget.size() == QSize(row->width, row->height));
  } else if (TakesFocus(control) && !control.Words().empty() && widget.width() > BareMarkWidth &&
             control.GetKind() != Control::Kind::TextBox) {
    const TextBlock words(FromBytes(control.Words()), theme.Font(TextRole::Body), widget.width() - MarkTextLeft,
                          control.Height > 315 ? Wrapping::Words : Wrapping::None);
    EXPECT_FALSE(words.IsCut());
    EXPECT_LE(words.Height(), widget.height());
  }
}

class AllFormsTest : public DesktopTest {
 protected:
  AllFormsTest() {
    StartProgram(app);
    // What the menus leave behind for the forms that are opened from them.
    SelectProduct(app.globals, "RB2000");
    app.globals.ComPortText = "None";
    app.globals.CurrentModel = Models()[0].name;
    // The editors of its tables need it.
    app.forms.Load("Configuration_VKRTX");
    app.globals.OwnerForm = "Configuration_VKRTX";
  }

  template <class Check>
  void ForEachForm(Check check) {
    const BoxWatcher boxes;
    for (const std::string& name : app.forms.Names()) {
      SCOPED_TRACE(name);
      Form& form = Show(name);
      check(form);
      if (form.style == FormStyle::Modal) app.forms.Unload(form);
    }
  }
};

TEST_F(AllFormsTest, EveryControlStandsAtItsPlaceWithAllItsWordsAndAName) {
  const Theme theme;
  ForEachForm([&](Form& form) {
    for (Control* control : form.Controls()) control->Visible = true;
    Settle();
    const FormWindow& window = WindowOf(form);
    EXPECT_EQ(window.size(), QSize(form.Width / 15, form.Height / 15));
    for (const Control* control : form.Controls()) {
      if (!control->Shown()) continue;
      SCOPED_TRACE(control->FullName());
      const QWidget* widget = window.WidgetOf(*control);
      ASSERT_TRUE(widget && widget->isVisible());
      EXPECT_EQ(QRect(widget->mapTo(&window, QPoint()), widget->size()), PlaceOnForm(*control));
      EXPECT_TRUE(!TakesFocus(*control) || !widget->accessibleName().isEmpty());
      ExpectNothingCutOff(*control, *widget, theme);
    }
  });
}

TEST_F(AllFormsTest, WhatTakesTheFocusLiesOnTopAndTabWalksThroughItAndBack) {
  ForEachForm([&](Form& form) {
    const auto stops = TabStops(form);
    if (stops.empty()) return;
    FormWindow& window = WindowOf(form);
    window.WidgetOf(*stops.back())->setFocus();
    for (const Control* stop : stops) {
      PressIn(form, Qt::Key_Tab, {}, "\t");
      EXPECT_TRUE(HasFocus(*stop)) << stop->FullName();
      EXPECT_TRUE(LiesOnTop(window, *window.WidgetOf(*stop), PlaceOnForm(*stop).center())) << stop->FullName();
    }
    for (auto stop = std::next(stops.rbegin()); stop != stops.rend(); ++stop) {
      PressIn(form, Qt::Key_Backtab, Qt::ShiftModifier);
      EXPECT_TRUE(HasFocus(**stop)) << (*stop)->FullName();
    }
  });
}

TEST_F(AllFormsTest, OnEveryPageFieldsTakeClicksUpToTheirEdgesAndTheFootKeepsItsLetters) {
  constexpr std::pair<char, const char*> Foot[] = {
      {'U', "UploadCmd"}, {'B', "BackCmd"}, {'N', "NextCmd"}, {'C', "CancelCmd"}};
  constexpr std::pair<const char*, const char*> Wizards[] = {
      {"Configuration_RB2000", ""},
      {"Configuration_RB3000", ""},
      {"Configuration_VK5300", ""},
      {"Configuration_RBCard", ""},
      {"Configuration_VKRTX", "AB Ethernet, ASCII, DF1"},
      {"Configuration_VKRTX", "AB Ethernet, Modbus"},
  };
  for (const auto& [name, model] : Wizards) {
    SCOPED_TRACE(std::string(name) + " " + model);
    app.forms.Unload(name);
    app.globals.CurrentModel = model;
    Form& form = Show(name);
    const FormWindow& window = WindowOf(form);
    if (form.Find("EthDHCPLst")) form.Get<ComboBox>("EthDHCPLst").Text = "Enabled";
    for (bool last = false; !last;) {
      for (const Control* stop : TabStops(form)) {
        const QRect place = PlaceOnForm(*stop);
        for (const int y : {place.top() + 3, place.bottom() - 3}) {
          EXPECT_TRUE(LiesOnTop(window, *window.WidgetOf(*stop), {place.center().x(), y})) << stop->FullName();
        }
      }
      Mnemonics mnemonics = ChooseMnemonics(form);
      for (const auto& [letter, button] : Foot) {
        Control* control = form.Find(button);
        EXPECT_EQ(mnemonics.targets[QChar(letter)], IsReachable(*control) ? control : nullptr) << letter;
      }
      last = app.globals.CurrentPage == app.globals.LastPage;
      if (!last) form.Get<ImageButton>("NextCmd").Click();
      Settle();
    }
    app.forms.Unload(form);
  }
}

}  // namespace
}  // namespace vk32
