// Every form of the program is drawn: each control where it stands, no text cut off, each one with a name.
#include <unistd.h>

#include <QEventLoop>
#include <QSocketNotifier>
#include <algorithm>
#include <cstdio>

#include "DesktopTest.h"
#include "LabelWidget.h"
#include "Text.h"
#include "resources/Pictures.h"
#include "shell/Products.h"

namespace vk32 {
namespace {
constexpr int ListTextLeft = 8, ListButtonWidth = 24, MarkTextLeft = 22, ButtonMargin = 8;

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
  } else if (TakesFocus(control) && !control.Words().empty() && widget.width() > ToPixels(BareMarkWidth) &&
             control.GetKind() != Control::Kind::TextBox) {
    const TextBlock words(FromBytes(control.Words()), theme.Font(TextRole::Body), widget.width() - MarkTextLeft,
                          control.Height > 315 ? Wrapping::Words : Wrapping::None);
    EXPECT_FALSE(words.IsCut());
    EXPECT_LE(words.Height(), widget.height());
  }
}

class AllFormsTest : public DesktopTest {
 protected:
  /// Tab walks through what takes the focus, and all of it lies on top up to its edges.
  void WalkByKeys(const Form& form) {
    const auto stops = TabStops(form);
    if (stops.empty()) return;
    const FormWindow& window = WindowOf(form);
    WidgetOf(*stops.back()).setFocus();
    for (const Control* stop : stops) {
      SCOPED_TRACE(stop->FullName());
      PressIn(form, Qt::Key_Tab, {}, "\t");
      EXPECT_TRUE(HasFocus(*stop));
      PressIn(form, Qt::Key_Backtab, Qt::ShiftModifier);
      EXPECT_EQ(HasFocus(*stop), stops.size() == 1);
      PressIn(form, Qt::Key_Tab, {}, "\t");
      const QRect place = PlaceOnForm(*stop);
      for (const int y : {place.top() + 3, place.bottom() - 3}) {
        const QWidget* top = window.childAt({place.center().x(), y});
        EXPECT_TRUE(top == &WidgetOf(*stop) || WidgetOf(*stop).isAncestorOf(top));
      }
    }
  }
  void ExpectAllShown(const Form& form) {
    const FormWindow& window = WindowOf(form);
    EXPECT_EQ(window.size(), QSize(form.Width / 15, form.Height / 15));
    for (const Control* control : form.Controls()) {
      if (!control->Shown()) continue;
      SCOPED_TRACE(control->FullName());
      const QWidget* widget = window.WidgetOf(*control);
      ASSERT_TRUE(widget && widget->isVisible());
      EXPECT_EQ(QRect(widget->mapTo(&window, QPoint()), widget->size()), PlaceOnForm(*control));
      EXPECT_TRUE(!TakesFocus(*control) || !widget->accessibleName().isEmpty());
      ExpectNothingCutOff(*control, *widget, Theme());
    }
  }

  /// Stops at each page, and at each form in the end.
  void ForEachForm(const std::function<void(Form&)>& onPage, const std::function<void(Form&)>& atEnd) {
    StartProgram(app);
    // What the menus leave behind for the forms that are opened from them.
    SelectProduct(app.globals, "RB2000");
    app.globals.ComPortText = "None";
    app.globals.OwnerForm = "Configuration_VKRTX";
    const BoxWatcher boxes;
    std::vector<std::string> forms = app.forms.Names();
    forms.push_back("Configuration_VKRTX");
    for (const std::string& name : forms) {
      SCOPED_TRACE(name);
      app.forms.Unload(name);
      app.globals.CurrentModel = Models()[&name == &forms.back() ? 1 : 0].name;
      app.forms.Load("Configuration_VKRTX");  // the editors of its tables need it
      Form& form = Show(name);
      const bool wizard = name.starts_with("Configuration_");
      if (form.Find("EthDHCPLst")) form.Get<ComboBox>("EthDHCPLst").Text = "Enabled";
      for (bool last = false; !last;) {
        onPage(form);
        last = !wizard || app.globals.CurrentPage == app.globals.LastPage;
        if (!last) form.Get<ImageButton>("NextCmd").Click();
        Settle();
      }
      for (Control* control : form.Controls()) control->Visible = true;
      Settle();
      atEnd(form);
      if (wizard || form.style == FormStyle::Modal) app.forms.Unload(form);
    }
  }
};

TEST_F(AllFormsTest, AreWalkedByKeysAndShowAllTheirWords) {
  ForEachForm(
      [this](Form& form) {
        WalkByKeys(form);
        for (Control* control : form.Controls()) {
          const auto* button = dynamic_cast<CommandButton*>(control);
          if (!button || button->key == WindowKey::None || !IsReachable(*button)) continue;
          EXPECT_EQ(ButtonFor(form, button->key), button) << button->FullName();
        }
        if (!form.Find("UploadCmd")) return;
        Mnemonics mnemonics = ChooseMnemonics(form);
        for (const char* button : {"UploadCmd", "BackCmd", "NextCmd", "CancelCmd"}) {
          Control* control = form.Find(button);
          EXPECT_EQ(mnemonics.targets[QChar(button[0])], IsReachable(*control) ? control : nullptr) << button;
        }
      },
      [this](Form& form) { ExpectAllShown(form); });
}

/// For real/read_all.py, which reads each form through the bus of assistive technology and then sends a line.
TEST_F(AllFormsTest, DISABLED_WaitForTheirReader) {
  ForEachForm([](Form&) {},
              [](Form& form) {
                for (Control* control : form.Controls()) {
                  auto* cell = dynamic_cast<Label*>(control);
                  if (cell && cell->Index() == 1) cell->Caption = "1";  // so that the tables have a row
                }
                std::printf("%s\n", form.Name());
                std::fflush(stdout);
                QEventLoop reading;
                QSocketNotifier line(STDIN_FILENO, QSocketNotifier::Read);
                QObject::connect(&line, &QSocketNotifier::activated, &reading, &QEventLoop::quit);
                reading.exec();
                std::getchar();
              });
}

}  // namespace
}  // namespace vk32
