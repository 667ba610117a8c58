#pragma once

namespace exchange {

// Receives the events of a BVilnor. CloseVilnor is declared to the host but never raised.
class Events {
 public:
  virtual ~Events() = default;
  // Tells the host to refresh its journal view; returns when every connected host has done so.
  virtual void UpdateJournal() = 0;
};

}  // namespace exchange
