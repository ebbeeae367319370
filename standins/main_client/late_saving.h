#pragma once

#include <string>

/// Makes the main client save the datastore when it ends: as it read it at its start, plus a
/// comment that it saved it. Only if a file "Tessel.saves" lies beside the program.
class LateSaving {
 public:
  /// Reads the datastore.
  LateSaving();

  /// Saves the datastore as soon as somebody else has changed it, so that the change is lost, or
  /// after three seconds without a change.
  void Save() const;

 private:
  std::string datastore_;  ///< empty if nothing is to be saved
};
