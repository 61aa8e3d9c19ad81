// Message boxes, file dialogs, texts, and the end of the program.
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
        EXPECT_EQ(box.accessibleDescription(), lines.join('\n'));
        EXPECT_GE(box.TextPlace().width(), 400);
        EXPECT_GE(box.width(), box.TextPlace().right());
        EXPECT_EQ(box.windowTitle(), "VK32");
        Press(box, Qt::Key_Return, {}, "\r");
      });
}

TEST_F(BoxesTest, KeysAnswerAndEnterDoesNotBreakAnything) {
  constexpr auto YesNo = MessageButtons::YesNo;
  struct Row {
    MessageBoxRequest request;
    int key;
    Answer answer;
  };
  for (const Row& row : {
           Row{{"?", MessageIcon::Question, "VK32", YesNo}, Qt::Key_Return, Answer::Yes},
           Row{{"?", MessageIcon::Question, "VK32", YesNo, true}, Qt::Key_Return, Answer::No},
           Row{{"?", MessageIcon::Question, "VK32", YesNo}, Qt::Key_Escape, Answer::No},
           Row{{"?", MessageIcon::Question, "VK32", YesNo}, Qt::Key_Y, Answer::Yes},
           Row{{"!", MessageIcon::None, "VK32"}, 0, Answer::OK},
       }) {
    const auto press = [&](MessageBox& box) {
      if (row.key == 0) return void(box.close());
      QWidget& pressed = row.key == Qt::Key_Return ? *box.focusWidget() : box;
      Press(pressed, row.key, {}, QChar(row.key & 0x7F));
    };
    EXPECT_EQ(Ask(row.request, press), row.answer) << row.key;
  }
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
