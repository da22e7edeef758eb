// What the system's own parts look like: light colours, in the order red, green, blue, alpha.
#pragma once

namespace qvdevice {

struct Color {
  double red, green, blue;
  double alpha = 1;

  constexpr Color faded(double factor) const { return {red, green, blue, alpha * factor}; }
};

namespace palette {

inline constexpr Color kLabel{0, 0, 0};
inline constexpr Color kSecondaryLabel{0.24, 0.24, 0.26, 0.6};
inline constexpr Color kPlaceholder{0.24, 0.24, 0.26, 0.3};
inline constexpr Color kTint{0, 0.478, 1};
inline constexpr Color kDestructive{1, 0.231, 0.188};
inline constexpr Color kWhite{1, 1, 1};
inline constexpr Color kGrouped{0.949, 0.949, 0.969};
inline constexpr Color kSeparator{0.24, 0.24, 0.26, 0.29};
inline constexpr Color kBar{0.976, 0.976, 0.976, 0.94};
inline constexpr Color kDimming{0, 0, 0, 0.24};
inline constexpr Color kSelection{0, 0.478, 1, 0.2};

} // namespace palette

} // namespace qvdevice
