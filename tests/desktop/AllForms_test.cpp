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

  /// With all its pages and panels open.
  template <class Check>
  void ForEachControl(Check check) {
    ForEachForm([&](const Form& form) {
      for (Control* control : form.Controls()) control->Visible = true;
      Settle();
      for (const Control* control : form.Controls()) {
        SCOPED_TRACE(control->FullName());
        if (WindowOf(form).WidgetOf(*control)) check(*control, *WindowOf(form).WidgetOf(*control));
      }
    });
  }

  int WidthOf(const std::string& words, const Theme& theme, TextRole role = TextRole::Body) {
    return QFontMetrics(theme.Font(role)).horizontalAdvance(FromBytes(words));
  }
};

TEST_F(AllFormsTest, EveryShownControlHasAWidgetAtItsPlace) {
  ForEachForm([&](Form& form) {
    for (Control* control : form.Controls()) control->Visible = true;
    Settle();
    const FormWindow& window = WindowOf(form);
    EXPECT_EQ(window.size(), QSize(form.Width / 15, form.Height / 15));
    for (const Control* control : form.Controls()) {
      if (!control->Shown()) continue;
      SCOPED_TRACE(control->FullName());
      const QWidget* widget = window.WidgetOf(*control);
      ASSERT_TRUE(widget);
      EXPECT_TRUE(widget->isVisible());
      EXPECT_EQ(QRect(widget->mapTo(&window, QPoint()), widget->size()), PlaceOnForm(*control));
    }
  });
}

TEST_F(AllFormsTest, WhatTakesTheFocusLiesOnTopAndPictureButtonsAreRestoredOutside) {
  ForEachForm([&](Form& form) {
    const FormWindow& window = WindowOf(form);
    for (const Control* stop : TabStops(form)) {
      SCOPED_TRACE(stop->FullName());
      QWidget* widget = window.WidgetOf(*stop);
      const QPoint middle = PlaceOnForm(*stop).center();
      EXPECT_TRUE(LiesOnTop(window, *widget, middle));
      const auto* button = dynamic_cast<const ImageButton*>(stop);
      if (!button) continue;
      const int raised = button->Picture;
      MouseDown(*widget, {5, 5});
      EXPECT_EQ(button->Picture, PressedPicture(raised));
      MouseUp(*widget, {-500, 5});
      EXPECT_EQ(button->Picture, raised);
    }
  });
}

TEST_F(AllFormsTest, FieldsTakeClicksUpToTheirEdgesOnEveryPage) {
  struct Walk {
    const char *name, *model;
  };
  for (const Walk& walk :
       {Walk{"Configuration_RB2000", ""}, Walk{"Configuration_RB3000", ""}, Walk{"Configuration_VK5300", ""},
        Walk{"Configuration_RBCard", ""}, Walk{"Configuration_VKRTX", "AB Ethernet, ASCII, DF1"},
        Walk{"Configuration_VKRTX", "AB Ethernet, Modbus"}}) {
    SCOPED_TRACE(std::string(walk.name) + " " + walk.model);
    app.forms.Unload(walk.name);
    app.globals.CurrentModel = walk.model;
    Form& form = Show(walk.name);
    const FormWindow& window = WindowOf(form);
    if (form.Find("EthDHCPLst")) form.Get<ComboBox>("EthDHCPLst").Text = "Enabled";
    for (bool last = false; !last;) {
      for (const Control* stop : TabStops(form)) {
        SCOPED_TRACE(stop->FullName());
        const QRect place = PlaceOnForm(*stop);
        for (const int y : {place.top() + 3, place.bottom() - 3}) {
          EXPECT_TRUE(LiesOnTop(window, *window.WidgetOf(*stop), {place.center().x(), y}));
        }
      }
      last = app.globals.CurrentPage == app.globals.LastPage;
      if (!last) form.Get<ImageButton>("NextCmd").Click();
      Settle();
    }
    app.forms.Unload(form);
  }
}

TEST_F(AllFormsTest, NoLabelIsCutOff) {
  ForEachControl([](const Control&, const QWidget& widget) {
    const auto* label = dynamic_cast<const LabelWidget*>(&widget);
    if (!label) return;
    EXPECT_FALSE(label->Block().IsCut()) << label->text().toStdString();
    EXPECT_LE(label->Block().Width(), label->width()) << label->text().toStdString();
    EXPECT_LE(label->Block().Height(), label->height() + 2) << label->text().toStdString();
  });
}

TEST_F(AllFormsTest, NoWordsOfAListOrButtonAreCutOff) {
  const Theme theme;
  ForEachControl([&](const Control& control, const QWidget& widget) {
    if (const auto* list = dynamic_cast<const ComboBox*>(&control)) {
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
  });
}

TEST_F(AllFormsTest, EveryControlThatTakesTheFocusHasAName) {
  ForEachControl([](const Control& control, const QWidget& widget) {
    EXPECT_TRUE(!TakesFocus(control) || !widget.accessibleName().isEmpty());
  });
}

TEST_F(AllFormsTest, TabWalksThroughAllStopsInOrderAndBack) {
  ForEachForm([&](Form& form) {
    const auto stops = TabStops(form);
    if (stops.empty()) return;
    FormWindow& window = WindowOf(form);
    window.WidgetOf(*stops.back())->setFocus();
    for (const Control* stop : stops) {
      PressIn(form, Qt::Key_Tab, {}, "\t");
      EXPECT_TRUE(HasFocus(*stop)) << stop->FullName();
    }
    for (auto stop = std::next(stops.rbegin()); stop != stops.rend(); ++stop) {
      PressIn(form, Qt::Key_Backtab, Qt::ShiftModifier);
      EXPECT_TRUE(HasFocus(**stop)) << (*stop)->FullName();
    }
  });
}

TEST_F(AllFormsTest, MnemonicsAreUnique) {
  ForEachForm([](const Form& form) {
    const Mnemonics mnemonics = ChooseMnemonics(form);
    EXPECT_EQ(mnemonics.targets.size(), mnemonics.marks.size());
  });
}

}  // namespace
}  // namespace vk32
