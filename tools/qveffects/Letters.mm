#import "Letters.h"

#include <array>
#include <cstring>
#include <string_view>

namespace {

/// Rows from above, the leftmost dot first.
using Glyph = std::array<std::string_view, 7>;

struct Letter {
  char character;
  Glyph rows;
};

// clang-format off: pictures
constexpr Letter letters[] = {
    {'a', {"     ", "     ", " ### ", "    #", " ####", "#   #", " ####"}},
    {'b', {"#    ", "#    ", "#### ", "#   #", "#   #", "#   #", "#### "}},
    {'d', {"    #", "    #", " ####", "#   #", "#   #", "#   #", " ####"}},
    {'e', {"     ", "     ", " ### ", "#   #", "#####", "#    ", " ### "}},
    {'g', {"     ", " ####", "#   #", "#   #", " ####", "    #", " ### "}},
    {'h', {"#    ", "#    ", "# ## ", "##  #", "#   #", "#   #", "#   #"}},
    {'i', {"  #  ", "     ", " ##  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'k', {"#    ", "#    ", "#  # ", "# #  ", "##   ", "# #  ", "#  # "}},
    {'l', {" ##  ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'n', {"     ", "     ", "# ## ", "##  #", "#   #", "#   #", "#   #"}},
    {'o', {"     ", "     ", " ### ", "#   #", "#   #", "#   #", " ### "}},
    {'r', {"     ", "     ", "# ## ", "##  #", "#    ", "#    ", "#    "}},
    {'t', {" #   ", " #   ", "###  ", " #   ", " #   ", " #  #", "  ## "}},
    {'u', {"     ", "     ", "#   #", "#   #", "#   #", "#  ##", " ## #"}},
    {'x', {"     ", "     ", "#   #", " # # ", "  #  ", " # # ", "#   #"}},
    {'0', {" ### ", "#   #", "#  ##", "# # #", "##  #", "#   #", " ### "}},
    {'2', {" ### ", "#   #", "    #", "   # ", "  #  ", " #   ", "#####"}},
};
// clang-format on

constexpr int kAdvance = 6;

} // namespace

void drawText(const char *text, CGPoint at, CGFloat dot) {
  for (; *text; ++text, at.x += kAdvance * dot) {
    for (const Letter &letter : letters) {
      if (letter.character != *text) continue;
      for (size_t y = 0; y < letter.rows.size(); ++y) {
        for (size_t x = 0; x < letter.rows[y].size(); ++x) {
          if (letter.rows[y][x] == '#') {
            UIRectFill(
                CGRectMake(at.x + static_cast<CGFloat>(x) * dot, at.y + static_cast<CGFloat>(y) * dot, dot, dot));
          }
        }
      }
    }
  }
}

CGFloat widthOfText(const char *text, CGFloat dot) {
  return (static_cast<CGFloat>(std::strlen(text)) * kAdvance - 1) * dot;
}
