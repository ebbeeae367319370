#pragma once

#include <string>

/// A main client that saves the datastore when it ends: as it read it at its start, with an element
/// "saved" added. It does so only where a file "Tessel.saves" lies beside the program.
class LateSaving {
 public:
  /// Reads the datastore.
  LateSaving();

  /// Saves the datastore as soon as somebody else has changed it, so that the change is lost, or
  /// after three seconds without one.
  void Save() const;

 private:
  std::string datastore_;  ///< empty when nothing is to be saved
};
