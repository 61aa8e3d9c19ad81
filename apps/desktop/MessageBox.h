// The message box: an icon, a text as it stands, and OK, or Yes and No.
#pragma once

#include <QDialog>
#include <QPushButton>

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

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddButtons(MessageButtons buttons, bool yesBreaksSomething);
  QPushButton* AddButton(const QString& words, Answer answer, int& right);
  int ButtonTop() const;

  MessageIcon icon_;
  const Theme& theme_;
  TextBlock text_;
  Answer answer_;
};

}  // namespace vk32
