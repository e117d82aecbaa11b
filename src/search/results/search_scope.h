// Where a search looks.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"

namespace quilmark {

inline constexpr int kScopeAll = 0, kScopeDesktop = 1, kScopeFirstVolume = 2;

// What the user chose. A value: each search carries the one that it was started with.
struct ScopeChoice {
  int scopeIndex = kScopeAll;  // 0: all volumes; 1: the Desktop; n >= 2: the volume at position n - 2
  // Letter of the volume that scopeIndex meant when it was chosen, since positions move when a drive
  // joins or leaves. 0: not known, the position says it.
  char16_t scopeDrive = 0;
};

// What a choice means at the moment.
struct SearchScope {
  std::optional<size_t> position;  // of the one volume in the list; else all
  char16_t drive = 0;              // letter of that volume, which counts for more; 0: not known
  bool desktopOnly = false;
  std::optional<std::u16string> desktop;  // the Desktop folder; empty where the system names none
};

// Asks the system for the Desktop folder if the choice needs it. Any thread.
[[nodiscard]] SearchScope ResolveScope(const ScopeChoice& choice);

// The volumes of `all` that the scope names, in their order; none where its volume is not among them.
[[nodiscard]] std::vector<VolumeIndex*> VolumesInScope(const std::vector<VolumeIndex*>& all,
                                                       const SearchScope& scope);

}  // namespace quilmark
