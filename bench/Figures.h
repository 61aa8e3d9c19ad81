// What was measured several times.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vk32::bench {

/// At least one figure.
class Figures {
 public:
  Figures() = default;
  Figures(double figure) : values_{figure} {}

  void Add(double figure) { values_.insert(std::upper_bound(values_.begin(), values_.end(), figure), figure); }
  double Median() const { return values_[values_.size() / 2]; }
  double Least() const { return values_.front(); }
  double Most() const { return values_.back(); }
  std::size_t Count() const { return values_.size(); }

 private:
  std::vector<double> values_;  // in ascending order
};

/// Ours and theirs by turns: what else the machine does meets both. A run tells its time; the figures are of ours by
/// theirs.
template <typename Ours, typename Theirs>
Figures Pairs(int count, const Ours& ours, const Theirs& theirs) {
  Figures figures;
  for (int i = 0; i < count; ++i) {
    const double mine = static_cast<double>(ours().count());
    figures.Add(mine / static_cast<double>(theirs().count()));
  }
  return figures;
}

}  // namespace vk32::bench
