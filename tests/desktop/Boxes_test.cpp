// Message boxes, file dialogs, texts, and the end of the program.
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <map>
#include <tuple>

#include "DesktopTest.h"
#include "FileDialogs.h"
#include "Paper.h"
#include "Text.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

class BoxesTest : public EveryTest {
 protected:
  Answer Ask(const MessageBoxRequest& request, std::function<void(MessageBox&)> look) {
    Answer answer = Answer::OK;
    const BoxWatcher boxes([look = std::move(look)](MessageBox& box) {
      const QPointer<QWidget> focused = box.focusWidget();
      ExpectButtonsInARow(box);
      focused->setFocus();
      look(box);
    });
    app.forms.dispatcher.Dispatch([&] { answer = screen.Ask(request); });
    EXPECT_EQ(boxes.Seen(), 1);
    return answer;
  }
  /// Below the text, inside the box, one beside the other, and walked by Tab from left to right.
  static void ExpectButtonsInARow(MessageBox& box) {
    std::map<int, QPushButton*> byPlace;
    for (QPushButton* button : box.findChildren<QPushButton*>()) {
      if (button->text() != "Copy details") byPlace[button->x()] = button;
    }
    QWidget* before = nullptr;
    for (const auto& [left, button] : byPlace) {
      EXPECT_TRUE(box.rect().contains(button->geometry()) && button->y() > box.TextPlace().bottom());
      EXPECT_TRUE(!before || before->geometry().right() < left);
      if (before) before->setFocus(), Press(*before, Qt::Key_Tab, {}, "\t");
      EXPECT_TRUE(!before || box.focusWidget() == button);
      before = button;
    }
  }
};

TEST_F(BoxesTest, TheTextStandsAsItIsWithItsBlanks) {
  Ask({"Press it.\r\nThe pattern:\r\n\n     CHA:  Off", MessageIcon::Critical, "Title"}, [](MessageBox& box) {
    const QStringList lines{"Press it.", "The pattern:", "", "     CHA:  Off"};
    EXPECT_EQ(box.Text().Lines(), lines);
    EXPECT_EQ(box.accessibleDescription(), lines.join('\n'));
    EXPECT_GE(box.width(), box.TextPlace().right());
    EXPECT_EQ(box.windowTitle() + box.accessibleName(), "TitleTitle");
    Press(box, Qt::Key_Return, {}, "\r");
  });
}

TEST_F(BoxesTest, DetailsAreThereToBeCopiedAndTheFormBelowWaitsForTheUser) {
  const QString details = "COM3: <nothing> came.\nSent last:" + QString(" 06").repeated(99);
  form.Busy = true;
  Settle();
  EXPECT_EQ(WindowOf(form).cursor().shape(), Qt::WaitCursor);
  Ask({"Failed", MessageIcon::Critical, "VK32", MessageButtons::OK, false, details.toStdString()},
      [&](MessageBox& box) {
        EXPECT_EQ(WindowOf(form).cursor().shape(), Qt::ArrowCursor);
        auto* copy = box.findChildren<QPushButton*>().front();
        const QRect lines = box.findChild<QLabel*>()->geometry();
        EXPECT_TRUE(box.TextPlace().bottom() < lines.top() && lines.bottom() < copy->y() && lines.height() > 60);
        Press(*copy, Qt::Key_Space, {}, " ");
        EXPECT_EQ(QGuiApplication::clipboard()->text(), details);
        Press(box, Qt::Key_Escape);
      });
  EXPECT_EQ(WindowOf(form).cursor().shape(), Qt::WaitCursor);
}

TEST_F(BoxesTest, KeysAnswerAndEnterDoesNotBreakAnything) {
  constexpr auto YesNo = MessageButtons::YesNo, Three = MessageButtons::SaveDiscardCancel;
  const std::tuple<MessageButtons, bool, int, Answer> rows[] = {
      {YesNo, false, Qt::Key_Return, Answer::Yes}, {YesNo, true, Qt::Key_Return, Answer::No},
      {YesNo, false, Qt::Key_Escape, Answer::No},  {YesNo, false, Qt::Key_Y, Answer::Yes},
      {YesNo, false, Qt::Key_N, Answer::No},       {Three, false, Qt::Key_Return, Answer::Save},
      {Three, false, Qt::Key_S, Answer::Save},     {Three, false, Qt::Key_D, Answer::Discard},
      {Three, false, Qt::Key_C, Answer::Cancel},   {Three, false, Qt::Key_Escape, Answer::Cancel},
      {MessageButtons::OK, false, 0, Answer::OK}};
  for (const auto& [buttons, yesBreaks, key, answer] : rows) {
    const auto press = [key = key](MessageBox& box) {
      if (key == 0) return void(box.close());
      QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
      QCoreApplication::sendEvent(box.focusWidget(), &held);
      EXPECT_FALSE(static_cast<QPushButton*>(box.focusWidget())->isDown()) << "it is down from before";
      Press(key == Qt::Key_Return ? *box.focusWidget() : box, key, {}, QChar(key & 0x7F));
    };
    EXPECT_EQ(Ask({"?", MessageIcon::Question, "VK32", buttons, yesBreaks}, press), answer) << key;
  }
}

TEST_F(BoxesTest, AFaultIsToldWithItsNumberAndEndsTheProgramWithStatusOne) {
  const BoxWatcher boxes([](MessageBox& box) {
    EXPECT_EQ(box.Text().Lines().join(' '), "Run-time error '6':  Overflow");
    Press(box, Qt::Key_Escape);
  });
  app.forms.dispatcher.Dispatch([] { throw RuntimeFault(RuntimeFault::Overflow); });
  EXPECT_EQ(boxes.Seen(), 1);
  EXPECT_EQ(screen.ExitStatus(), 1);
  EXPECT_FALSE(WindowOf(form).isVisible());
}

TEST_F(BoxesTest, TheEndComesAtOnceAlsoFromInsideABox) {
  Ask({"Open when the program ends", MessageIcon::None, "VK32"}, [&](MessageBox& box) {
    app.forms.dispatcher.Dispatch([this] { app.forms.dispatcher.End(); });
    Press(box, Qt::Key_Escape);
  });
  EXPECT_TRUE(screen.Ended());
  EXPECT_EQ(screen.ExitStatus(), 0);
}

TEST_F(BoxesTest, AFileDialogGivesTheChosenFileAndNoneThatCanNotBeWritten) {
  using enum FileDialogRequest::Kind;
  const TemporaryFile file("plant.cfg", "x");
  const QString folder = QFileInfo(QString::fromStdString(file.Path())).path();
  const std::tuple<FileDialogRequest::Kind, QString, QString, int> rows[] = {{Open, "plant.cfg", "plant.cfg", 0},
                                                                             {Save, "new", "new.cfg", 0},
                                                                             {Save, "new.txt", "new.txt", 0},
                                                                             {Save, "none/new.cfg", "", 1}};
  QString opened = QDir::currentPath();
  for (const auto& [kind, typed, given, told] : rows) {
    const BoxWatcher boxes;
    QTimer::singleShot(0, [&, name = typed] {
      auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
      EXPECT_EQ(dialog.directory().path(), std::exchange(opened, folder));
      dialog.setDirectory(folder);
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
      static_cast<QDialog&>(dialog).accept();
      dialog.close();  // if it did not take it
    });
    const auto path = screen.AskFile({kind, "Pick", "Settings (*.cfg)|*.cfg"});
    EXPECT_EQ(path.value_or(""), given.isEmpty() ? "" : QDir::toNativeSeparators(folder + "/" + given).toStdString());
    EXPECT_EQ(boxes.Seen(), told) << typed.toStdString();
  }
}

TEST(Paper, HoldsARowOnOnePage) {
  std::string html = "<h1>Report</h1><table class=\"fields\">";
  for (int row = 0; row < 4; ++row)
    html += "<tr><th>Row</th><td>" + QByteArray("line<br>").repeated(38).toStdString() + "</td></tr>";
  const QByteArray pdf = QByteArray::fromStdString(PdfOf(html + "</table>"));
  EXPECT_TRUE(pdf.startsWith("%PDF-"));
  EXPECT_EQ(pdf.count("/Type /Page\n"), 4);
}

TEST(Paper, KeepsAHeadingWithItsTable) {
  const auto pages = [](int above, int below) {
    const auto rows = [](int count) {
      return "<table>" + QByteArray("<tr><th>Row").repeated(count).toStdString() + "</table>";
    };
    return QByteArray::fromStdString(PdfOf(rows(above) + "<h2>Head</h2>" + rows(below))).count("/Type /Page\n");
  };
  int fit = 40, moved = 0;
  while (pages(40, fit + 1) == 2) ++fit;
  for (int above = 41; above < 54; ++above) moved += pages(above, 40 + fit - above) == 3;
  EXPECT_GT(moved, 0) << "what it takes along needs a third page";
}

TEST(Texts, AreTurnedIntoQtsOwnAndBack) {
  const std::string filter = "Settings (*.cfg)|*.cfg|Both|*.cfg;*.rom|All Files (*.*)|*.*", bytes("\x00\x7F\xFFz", 4);
  EXPECT_EQ(NameFilters(filter), (QStringList{"Settings (*.cfg)", "Both (*.cfg *.rom)", "All Files (*)"}));
  EXPECT_EQ(DefaultSuffix(filter) + DefaultSuffix("All|*.*") + DefaultSuffix("A|*.a|B|*.b", 1), "cfgb");
  EXPECT_EQ(ToBytes(FromBytes(bytes)), bytes);
  EXPECT_EQ(FromWords("/home/\xC3\xA9"), QStringLiteral("/home/\u00E9"));
  EXPECT_EQ(FromWords("caf\xE9"), QStringLiteral("caf\u00E9"));
  const TextBlock block("one two\r\nthree\n\n  four", Theme().Font(TextRole::Body), 45, Wrapping::Words);
  EXPECT_EQ(block.Lines(), (QStringList{"one", "two", "three", "", "  four"}));
}

}  // namespace
}  // namespace vk32
