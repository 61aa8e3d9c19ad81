// The message box.
#include "MessageBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "Drawing.h"
#include "Text.h"
#include "Theme.h"

namespace vk32 {
namespace {

// Pixels at scale 1.
constexpr QPoint IconMiddle(40, 42);
constexpr int IconRadius = 20, TextLeft = 80, TextLeftWithoutIcon = 24, TextTop = 26, TextRight = 60;
constexpr int NarrowestText = 400, WidestText = 560;
constexpr int ButtonWidth = 96, ButtonHeight = 26, ButtonGap = 8, ButtonRight = 16, ButtonBottom = 22,
              AboveButtons = 20;
constexpr int CopyButtonWidth = 136, AboveLine = 20, AboveDetails = 8;
constexpr int RingWidth = 3;  // the focus ring and its gap

/// A button with its focus ring around it.
class BoxButton : public QPushButton {
 public:
  BoxButton(const QString& words, const QFont& font, QWidget* parent) : QPushButton(words, parent) {
    setFont(font);
    setAutoDefault(true);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    // A key that is still down from before must not answer.
    if (!event->isAutoRepeat()) QPushButton::keyPressEvent(event);
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (hasFocus()) {
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(QPen(colors::Text, 2));
      painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
    const QRect face = rect().adjusted(RingWidth, RingWidth, -RingWidth, -RingWidth);
    DrawButtonFace(painter, face, isDown(), true);
    const TextBlock words(text().remove(u'&'), font(), face.width(), Wrapping::None);
    words.Draw(painter, face.translated(0, isDown() ? 1 : 0), Qt::AlignHCenter | Qt::AlignVCenter, colors::Text);
  }
};

void DrawIconSign(QPainter& painter, MessageIcon icon, QFont font) {
  if (icon == MessageIcon::Critical) {
    painter.setPen(QPen(colors::Page, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(IconMiddle - QPoint(7, 7), IconMiddle + QPoint(7, 7));
    painter.drawLine(IconMiddle + QPoint(-7, 7), IconMiddle + QPoint(7, -7));
    return;
  }
  font.setPixelSize(24);
  painter.setFont(font);
  painter.setPen(colors::Page);
  const int lower = icon == MessageIcon::Exclamation ? 4 : 0;
  const QRect area(IconMiddle - QPoint(IconRadius, IconRadius - lower), QSize(2 * IconRadius, 2 * IconRadius));
  painter.drawText(area, Qt::AlignCenter,
                   icon == MessageIcon::Question      ? "?"
                   : icon == MessageIcon::Exclamation ? "!"
                                                      : "i");
}

void DrawIcon(QPainter& painter, MessageIcon icon, const QFont& font) {
  if (icon == MessageIcon::None) return;
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = icon == MessageIcon::Critical ? colors::Accent : colors::Filled;
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  if (icon == MessageIcon::Exclamation) {
    const QPointF triangle[] = {IconMiddle + QPointF(0, -17), IconMiddle + QPointF(19, 16),
                                IconMiddle + QPointF(-19, 16)};
    painter.setPen(QPen(color, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(triangle, 3);
  } else {
    painter.drawEllipse(IconMiddle, IconRadius, IconRadius);
  }
  DrawIconSign(painter, icon, font);
}

}  // namespace

MessageBox::MessageBox(const MessageBoxRequest& request, const Theme& theme, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                          Qt::MSWindowsFixedSizeDialogHint),
      icon_(request.icon),
      theme_(theme),
      text_(FromWords(request.text), theme.Font(TextRole::Body), WidestText, Wrapping::Words),
      answer_(Declining(request.buttons)) {
  setWindowTitle(FromWords(request.title));
  setWindowModality(Qt::ApplicationModal);
  // Read out by assistive technology when the box opens.
  setAccessibleName(windowTitle());
  setAccessibleDescription(text_.Lines().join(u'\n'));
  const int width = TextPlace().right() + 1 + TextRight;
  setFixedWidth(width);
  if (!request.details.empty()) AddDetails(FromWords(request.details));
  setFixedHeight(ButtonTop() + ButtonHeight + ButtonBottom);
  AddButtons(request.buttons, request.yesBreaksSomething);
}

QRect MessageBox::TextPlace() const {
  const int left = icon_ == MessageIcon::None ? TextLeftWithoutIcon : TextLeft;
  // One line stands beside the middle of the icon.
  const int top = text_.Lines().size() == 1 ? IconMiddle.y() - text_.Height() / 2 : TextTop;
  return {left, top, std::max(text_.Width(), NarrowestText), text_.Height()};
}

int MessageBox::TextBottom() const { return std::max(TextPlace().bottom() + 1, IconMiddle.y() + IconRadius); }

int MessageBox::ButtonTop() const {
  return (details_ ? details_->geometry().bottom() + 1 : TextBottom()) + AboveButtons;
}

void MessageBox::AddDetails(const QString& details) {
  const QFont& font = theme_.Font(TextRole::Small);
  const QString lines = details.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
  details_ = new QLabel(
      QStringLiteral("<p style=\"line-height:%1px\">%2</p>").arg(QString::number(Theme::LinePitch(font)), lines), this);
  details_->setFont(font);
  details_->setWordWrap(true);
  details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  details_->setAccessibleName(details);
  QPalette palette = details_->palette();
  palette.setColor(QPalette::WindowText, colors::Muted);
  details_->setPalette(palette);
  const QRect text = TextPlace();
  const int top = TextBottom() + AboveLine + 1 + AboveDetails;
  details_->setGeometry(text.left(), top, text.width(), details_->heightForWidth(text.width()));
  setAccessibleDescription(accessibleDescription() + u'\n' + details);
  QPushButton* copy = PlaceButton(QStringLiteral("Copy details"), text.left(), CopyButtonWidth);
  connect(copy, &QPushButton::clicked, this, [details] { QGuiApplication::clipboard()->setText(details); });
}

QPushButton* MessageBox::AddButton(const QString& words, Answer answer, int& right) {
  right -= ButtonWidth;
  QPushButton* button = PlaceButton(words, right, ButtonWidth);
  connect(button, &QPushButton::clicked, this, [this, answer] {
    answer_ = answer;
    accept();
  });
  right -= ButtonGap;
  return button;
}

QPushButton* MessageBox::PlaceButton(const QString& words, int left, int width) {
  auto* button = new BoxButton(words, theme_.Font(TextRole::Body), this);
  const QRect face(left, ButtonTop(), width, ButtonHeight);
  button->setGeometry(face.adjusted(-RingWidth, -RingWidth, RingWidth, RingWidth));
  return button;
}

void MessageBox::AddButtons(MessageButtons buttons, bool yesBreaksSomething) {
  int right = width() - ButtonRight;
  if (buttons == MessageButtons::OK) {
    AddButton(QStringLiteral("OK"), Answer::OK, right)->setFocus();
    return;
  }
  if (buttons == MessageButtons::SaveDiscardCancel) {
    QPushButton* cancel = AddButton(QStringLiteral("&Cancel"), Answer::Cancel, right);
    QPushButton* discard = AddButton(QStringLiteral("&Discard"), Answer::Discard, right);
    QPushButton* save = AddButton(QStringLiteral("&Save"), Answer::Save, right);
    setTabOrder(save, discard);
    setTabOrder(discard, cancel);
    return save->setFocus();
  }
  QPushButton* no = AddButton(QStringLiteral("&No"), Answer::No, right);
  QPushButton* yes = AddButton(QStringLiteral("&Yes"), Answer::Yes, right);
  setTabOrder(yes, no);
  (yesBreaksSomething ? no : yes)->setFocus();
}

Answer MessageBox::Ask() {
  exec();
  return answer_;
}

void MessageBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawIcon(painter, icon_, theme_.Font(TextRole::Product));
  text_.Draw(painter, TextPlace(), Qt::AlignLeft | Qt::AlignTop, colors::Text);
  const int left = TextPlace().left();
  if (details_) painter.fillRect(left, TextBottom() + AboveLine, width() - ButtonRight - left, 1, colors::Hairline);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && !event->isAutoRepeat()) return onHelp();
  // The bare letters of the buttons do as well.
  for (QPushButton* button : findChildren<QPushButton*>()) {
    const QString words = button->text();
    if (words.startsWith(u'&') && event->text().compare(words.mid(1, 1), Qt::CaseInsensitive) == 0) {
      return button->click();
    }
  }
  QDialog::keyPressEvent(event);
}

}  // namespace vk32
