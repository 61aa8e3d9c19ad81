// The widget of a label.
#pragma once

#include <QLabel>
#include <optional>

#include "ControlWidget.h"
#include "TextBlock.h"

namespace vk32 {

class LabelWidget : public QLabel, public ControlWidget {
 public:
  LabelWidget(Label& label, QWidget& parent, Theme& theme);

  QWidget& AsWidget() override { return *this; }
  void Sync() override;
  Ring FocusRing() const override;
  void Activate() override;
  void LetGo() override;
  void ShowMark(QChar mark) override;
  QString Tip() const override;

  /// The text as it's laid out at this size.
  const TextBlock& Block() const;
  /// A press of it leads somewhere.
  bool TakesMouse() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  Qt::Alignment Alignment() const;
  /// Where the text of one line stands.
  QRect LinePlace() const;
  QColor TextColor() const;

  Label& label_;
  Theme& theme_;
  mutable std::optional<TextBlock> block_;
  QColor color_;
  QChar mark_;
  Qt::MouseButton held_ = Qt::NoButton;
};

}  // namespace vk32
