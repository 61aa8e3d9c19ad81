// Message boxes, file dialogs, texts, and the end of the program.
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <tuple>

#include "DesktopTest.h"
#include "FileDialogs.h"
#include "Text.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

class BoxesTest : public EveryTest {
 protected:
  Answer Ask(const MessageBoxRequest& request, std::function<void(MessageBox&)> look) {
    Answer answer = Answer::OK;
    const BoxWatcher boxes(std::move(look));
    app.forms.dispatcher.Dispatch([&] { answer = screen.Ask(request); });
    EXPECT_EQ(boxes.Seen(), 1);
    return answer;
  }
};

TEST_F(BoxesTest, TheTextStandsAsItIsWithItsBlanks) {
  Ask({"Press it.\r\nThe pattern:\r\n\n     CHA:  Off", MessageIcon::Critical, "Title"}, [](MessageBox& box) {
    const QStringList lines{"Press it.", "The pattern:", "", "     CHA:  Off"};
    EXPECT_EQ(box.Text().Lines(), lines);
    EXPECT_EQ(box.accessibleDescription(), lines.join('\n'));
    EXPECT_GE(box.width(), box.TextPlace().right());
    EXPECT_EQ(box.windowTitle(), "Title");
    Press(box, Qt::Key_Return, {}, "\r");
  });
}

TEST_F(BoxesTest, DetailsAreThereToBeCopiedAndTheFormBelowWaitsForTheUser) {
  const QString details = "COM3: <nothing> came.\nSent last: 06";
  form.Busy = true;
  Ask({"Failed", MessageIcon::Critical, "VK32", MessageButtons::OK, false, details.toStdString()},
      [&](MessageBox& box) {
        EXPECT_EQ(WindowOf(form).cursor().shape(), Qt::ArrowCursor);
        auto* copy = box.findChildren<QPushButton*>().front();
        const QRect lines = box.findChild<QLabel*>()->geometry();
        EXPECT_TRUE(box.TextPlace().bottom() < lines.top() && lines.bottom() < copy->y() && lines.height() > 30);
        Press(*copy, Qt::Key_Space, {}, " ");
        EXPECT_EQ(QGuiApplication::clipboard()->text(), details);
        Press(box, Qt::Key_Escape);
      });
  EXPECT_EQ(WindowOf(form).cursor().shape(), Qt::WaitCursor);
}

TEST_F(BoxesTest, KeysAnswerAndEnterDoesNotBreakAnything) {
  constexpr auto YesNo = MessageButtons::YesNo;
  const std::tuple<MessageButtons, bool, int, Answer> rows[] = {{YesNo, false, Qt::Key_Return, Answer::Yes},
                                                                {YesNo, true, Qt::Key_Return, Answer::No},
                                                                {YesNo, false, Qt::Key_Escape, Answer::No},
                                                                {YesNo, false, Qt::Key_Y, Answer::Yes},
                                                                {MessageButtons::OK, false, 0, Answer::OK}};
  for (const auto& [buttons, yesBreaks, key, answer] : rows) {
    const auto press = [key = key](MessageBox& box) {
      if (key == 0) return void(box.close());
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

TEST_F(BoxesTest, AFileDialogGivesTheChosenFile) {
  const TemporaryFile file("plant.cfg", "x");
  QTimer::singleShot(0, [&file] {
    auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
    dialog.selectFile(QString::fromStdString(file.Path()));
    static_cast<QDialog&>(dialog).accept();
    dialog.close();  // if it did not take it
  });
  EXPECT_EQ(screen.AskFile({FileDialogRequest::Kind::Open, "Open", "All Files (*.*)|*.*"}), file.Path());
}

TEST(Texts, AreTurnedIntoQtsOwnAndBack) {
  const std::string filter = "Settings (*.cfg)|*.cfg|Both|*.cfg;*.rom|All Files (*.*)|*.*", bytes("\x00\x7F\xFFz", 4);
  EXPECT_EQ(NameFilters(filter), (QStringList{"Settings (*.cfg)", "Both (*.cfg *.rom)", "All Files (*)"}));
  EXPECT_EQ(DefaultSuffix(filter) + DefaultSuffix("All|*.*"), "cfg");
  EXPECT_EQ(ToBytes(FromBytes(bytes)), bytes);
  EXPECT_EQ(FromWords("/home/\xC3\xA9"), QStringLiteral("/home/\u00E9"));
  EXPECT_EQ(FromWords("caf\xE9"), QStringLiteral("caf\u00E9"));
  const TextBlock block("one two\r\nthree\n\n  four", Theme().Font(TextRole::Body), 45, Wrapping::Words);
  EXPECT_EQ(block.Lines(), (QStringList{"one", "two", "three", "", "  four"}));
}

}  // namespace
}  // namespace vk32
