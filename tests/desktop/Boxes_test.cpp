// Message boxes, file dialogs, texts, and the end of the program.
#include <QPushButton>

#include "DesktopTest.h"
#include "FileDialogs.h"
#include "Text.h"

namespace vk32 {
namespace {

class BoxesTest : public DesktopTest {
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
  Ask({"Press the Configure button on the VK-RTX before continuing.\r\nThe pattern:\r\n\n     CHA:  Off",
       MessageIcon::Critical, "VK32"},
      [](MessageBox& box) {
        const QStringList lines{"Press the Configure button on the VK-RTX before continuing.", "The pattern:", "",
                                "     CHA:  Off"};
        EXPECT_EQ(box.Text().Lines(), lines);
        EXPECT_GE(box.TextPlace().width(), 400);
        EXPECT_GE(box.width(), box.TextPlace().right());
        EXPECT_EQ(box.windowTitle(), "VK32");
        Press(box, Qt::Key_Return, {}, "\r");
      });
}

TEST_F(BoxesTest, YesHasTheFocusUnlessItBreaksSomething) {
  const auto focused = [](MessageBox& box) { return dynamic_cast<QPushButton*>(box.focusWidget())->text(); };
  EXPECT_EQ(Ask({"?", MessageIcon::Question, "VK32", MessageButtons::YesNo},
                [&](MessageBox& box) {
                  EXPECT_EQ(focused(box), "&Yes");
                  Press(*box.focusWidget(), Qt::Key_Return, {}, "\r");
                }),
            Answer::Yes);
  EXPECT_EQ(Ask({"?", MessageIcon::Question, "VK32", MessageButtons::YesNo, true},
                [&](MessageBox& box) {
                  EXPECT_EQ(focused(box), "&No");
                  Press(*box.focusWidget(), Qt::Key_Return, {}, "\r");
                }),
            Answer::No);
}

TEST_F(BoxesTest, EscapeIsNoAndTheLettersAnswer) {
  const MessageBoxRequest question{"?", MessageIcon::Question, "VK32", MessageButtons::YesNo};
  EXPECT_EQ(Ask(question, [](MessageBox& box) { Press(box, Qt::Key_Escape); }), Answer::No);
  EXPECT_EQ(Ask(question, [](MessageBox& box) { Press(box, Qt::Key_Y, {}, "y"); }), Answer::Yes);
  EXPECT_EQ(Ask({"!", MessageIcon::None, "VK32"}, [](MessageBox& box) { box.close(); }), Answer::OK);
}

TEST_F(BoxesTest, AFaultIsToldWithItsNumberAndEndsTheProgramWithStatusOne) {
  GalleryForm& form = ShowGallery();
  form.NextCmd.OnClick = Handler([] { throw RuntimeFault(RuntimeFault::Overflow); });
  QString text;
  const BoxWatcher boxes([&](MessageBox& box) {
    text = box.Text().Lines().join(' ');
    Press(box, Qt::Key_Escape);
  });
  Click(form.NextCmd);
  EXPECT_EQ(text, "Run-time error '6':  Overflow");
  EXPECT_TRUE(screen.Ended());
  EXPECT_EQ(screen.ExitStatus(), 1);
  EXPECT_FALSE(WindowOf(form).isVisible());
}

TEST_F(BoxesTest, TheEndComesAtOnceAlsoFromInsideABox) {
  GalleryForm& form = ShowGallery();
  form.NextCmd.OnClick = Handler([this] { app.forms.dispatcher.End(); });
  Ask({"Open when the program ends", MessageIcon::None, "VK32"}, [&](MessageBox& box) {
    Press(WidgetOf(form.NextCmd), Qt::Key_Space, {}, " ");
    Press(box, Qt::Key_Escape);
  });
  EXPECT_TRUE(screen.Ended());
  EXPECT_EQ(screen.ExitStatus(), 0);
}

TEST(FileDialogs, FiltersAreTurnedIntoQtsOwn) {
  const std::string filter = "Settings (*.cfg)|*.cfg|Both|*.cfg;*.rom|All Files (*.*)|*.*";
  EXPECT_EQ(NameFilters(filter), (QStringList{"Settings (*.cfg)", "Both (*.cfg *.rom)", "All Files (*)"}));
  EXPECT_EQ(DefaultSuffix(filter), "cfg");
  EXPECT_EQ(DefaultSuffix("All|*.*"), "");
  EXPECT_TRUE(NameFilters("").isEmpty());
}

TEST(Text, FieldsHoldBytesAndPeopleReadWords) {
  EXPECT_EQ(ToBytes(FromBytes("\x00\x7F\xFF"
                              "a")),
            std::string("\x00\x7F\xFF"
                        "a"));
  EXPECT_EQ(FromWords("/home/\xC3\xA9"), QStringLiteral("/home/\u00E9"));
  EXPECT_EQ(FromWords("caf\xE9"), QStringLiteral("caf\u00E9"));
}

TEST(TextBlock, LinesBreakAtWordsAndAtLineEnds) {
  const Theme theme;
  const TextBlock block("one two\r\nthree\n\n  four", theme.Font(TextRole::Body), 45, Wrapping::Words);
  EXPECT_EQ(block.Lines(), (QStringList{"one", "two", "three", "", "  four"}));
  EXPECT_EQ(block.Height(), 5 * 18);
  EXPECT_FALSE(block.IsCut());
}

}  // namespace
}  // namespace vk32
