// The part of the product menu that tells which serial ports there are, and what becomes of the chosen one.
#pragma once

#include <memory>
#include <vector>

#include "app/App.h"
#include "forms/ControlArray.h"
#include "forms/Controls.h"
#include "platform/PlaceWatch.h"

namespace vk32 {

/// Follows what is plugged in and out for as long as it lives, without looking at the devices themselves. Keeps the
/// notes of the list in which a port is chosen.
class PortsFound {
 public:
  /// `portsCbo`: of the same form.
  PortsFound(App& app, Form& form, ComboBox& portsCbo);

  /// Looks anew at what there is.
  void Refresh();

 private:
  static constexpr int Rows = 5, RowHeight = 255, RowsTop = 4305;

  void PortsTmr_Timer();
  void PortFoundLbl_Click(int row);
  void ShowRows();
  void ShowNotes();
  std::string ChosenWords() const;

  App& app_;
  Form& form_;
  ComboBox& portsCbo_;
  PlaceWatch watch_;
  std::vector<FoundPort> found_;
  bool lookAgain_ = false;  // what has begun to change may not be done

  // clang-format off
  Label      PortLbl        {form_, "PortLbl",        {3270, 3405, 4020, 480}, "", TextRole::Small};
  Label      PortsFoundLbl  {form_, "PortsFoundLbl",  {3270, 3960, 4020, 315}, "Ports found", TextRole::Heading};
  Frame      PortsLineFrame {form_, "PortsLineFrame", {3270, 4275, 4020,  15}, Fill::Hairline};
  ControlArray<RowLabel> PortFoundLbl{"PortFoundLbl", 1, Rows, [this](ControlName name, int row) {
    return std::make_unique<RowLabel>(form_, name, Place{3270, RowsTop + RowHeight * (row - 1), 4020, RowHeight},
        std::vector<RowLabel::Column>{{120, TextRole::TableName}, {930, TextRole::TableText}, {-1335, TextRole::Small}},
        [this, row] { PortFoundLbl_Click(row); });
  }};
  VScrollBar PortsVScroll   {form_, "PortsVScroll",   {6990, RowsTop, 300, Rows * RowHeight}, [this] { ShowRows(); }, Fill::None};
  Label      NoPortLbl      {form_, "NoPortLbl",      {3270, 4305, 4020, 255}, "No serial port found. Plug in the adapter.", TextRole::Small};
  Timer      PortsTmr       {form_, "PortsTmr", 500, true, [this] { PortsTmr_Timer(); }};
  // clang-format on
};

}  // namespace vk32
