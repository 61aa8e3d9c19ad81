// The message box: an icon, a text as it stands, details of a failure, and OK, or Yes and No.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "TextBlock.h"
#include "forms/Screen.h"

namespace vk32 {

class Theme;

/// Modal to the whole program. Shown by Ask, which waits for the answer; closing the box is OK, or No.
class MessageBox : public QDialog {
 public:
  MessageBox(const MessageBoxRequest& request, const Theme& theme, QWidget* parent);

  Answer Ask();

  const TextBlock& Text() const { return text_; }
  QRect TextPlace() const;

  std::function<void()> onHelp = [] {};  // F1

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddButtons(MessageButtons buttons, bool yesBreaksSomething);
  QPushButton* AddButton(const QString& words, Answer answer, int& right);
  QPushButton* PlaceButton(const QString& words, int left, int width);
  /// The lines below the text, to be selected, and the button that copies them.
  void AddDetails(const QString& details);
  int TextBottom() const;
  int ButtonTop() const;

  MessageIcon icon_;
  const Theme& theme_;
  TextBlock text_;
  Answer answer_;
  QLabel* details_ = nullptr;
};

}  // namespace vk32
