// Which widget stands for which kind of control.
#include "ControlWidget.h"

#include "AreaWidgets.h"
#include "BarWidgets.h"
#include "ButtonWidgets.h"
#include "FieldWidget.h"
#include "LabelWidget.h"
#include "ListWidget.h"
#include "MarkWidgets.h"
#include "RowWidget.h"
#include "TerminalWidget.h"

namespace vk32 {

ControlWidget* MakeWidget(Control& control, QWidget& parent, Theme& theme) {
  switch (control.GetKind()) {
    case Control::Kind::Label:
      if (auto* row = dynamic_cast<RowLabel*>(&control)) return new RowWidget(*row, parent, theme);
      return new LabelWidget(static_cast<Label&>(control), parent, theme);
    case Control::Kind::TextBox: {
      auto& box = static_cast<TextBox&>(control);
      if (box.lines == TextBox::Lines::Many) return new TerminalWidget(box, parent, theme);
      return new FieldWidget(box, parent);
    }
    case Control::Kind::ComboBox: return new ListWidget(static_cast<ComboBox&>(control), parent);
    case Control::Kind::CheckBox: return new CheckWidget(static_cast<CheckBox&>(control), parent, theme);
    case Control::Kind::OptionButton: return new OptionWidget(static_cast<OptionButton&>(control), parent, theme);
    case Control::Kind::ImageButton: return new PictureButtonWidget(static_cast<ImageButton&>(control), parent, theme);
    case Control::Kind::CommandButton:
      return new CommandButtonWidget(static_cast<CommandButton&>(control), parent, theme);
    case Control::Kind::Image: return new PictureWidget(static_cast<Image&>(control), parent, theme);
    case Control::Kind::Frame:
      if (auto* table = dynamic_cast<RowTable*>(&control)) return new RowTableWidget(*table, parent);
      return new FrameWidget(static_cast<Frame&>(control), parent);
    case Control::Kind::VScrollBar: return new ScrollBarWidget(static_cast<VScrollBar&>(control), parent);
    case Control::Kind::ProgressBar: return new ProgressWidget(static_cast<ProgressBar&>(control), parent);
    case Control::Kind::Timer:
    case Control::Kind::FileDialog: break;
  }
  return nullptr;
}

}  // namespace vk32
