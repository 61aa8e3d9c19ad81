// What a file or a device holds, apart from what the user has before him.
#pragma once

#include <optional>
#include <string>

#include "listing/Listing.h"

namespace vk32 {

class ExchangeObserver;
struct SentParameters;

/// A product, and the model of a VK-RTX, as Globals has them.
struct WizardKind {
  std::string product, model;
};

/// Reads other configurations by a wizard of their own, which nobody sees; nothing of the one on the screen is touched.
class Elsewhere {
 public:
  virtual ~Elsewhere() = default;

  /// What the pages show of that configuration, hidden fields left out. Nothing if there is none, or only a part of it:
  /// Why tells.
  virtual std::optional<Listing> ReadFile(const std::string& path, const WizardKind& kind) = 0;
  /// By the upload of the product, without its reminder. `port`: "COM3"; `observer`: hears how it goes.
  virtual std::optional<Listing> ReadDevice(const std::string& port, const WizardKind& kind,
                                            ExchangeObserver& observer) = 0;
  /// What the pages would show had the product given back what was sent to it, as far as it gives it back.
  virtual Listing ShowSent(const SentParameters& sent, const WizardKind& kind) = 0;
  /// Ends a reading that is under way: it gives nothing.
  virtual void Stop() = 0;
  /// A sentence for the user.
  virtual std::string Why() const = 0;
};

}  // namespace vk32
