// The part of a wizard's apply page that shows what has changed since the values came.
#include "models/wizard/ChangesPart.h"

namespace vk32 {

void ChangesPart::Show(const ValueOrigin& origin) {
  ChangesSinceLbl.Caption = origin.Get().since;
  std::vector<std::vector<TextCell>> cells;
  for (const Difference& change : origin.Changed()) {
    cells.push_back({{change.Words()}, ValueCell(change.left), ValueCell(change.right)});
  }
  rows.Show(std::move(cells));
}

}  // namespace vk32
