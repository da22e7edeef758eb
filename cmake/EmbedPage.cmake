# cmake -DOUT=... -DFOLDER=... -DFILES="a.html b.css" -P EmbedPage.cmake: writes the table of a page's files as C++.
separate_arguments(FILES)
set(html "text/html; charset=utf-8")
set(css "text/css; charset=utf-8")
set(js "text/javascript; charset=utf-8")
set(svg "image/svg+xml")
set(table "")
foreach(file IN LISTS FILES)
  file(READ "${FOLDER}/${file}" content)
  if(content MATCHES "\\)page\"")
    message(FATAL_ERROR "${file} holds what ends the text that it is written as")
  endif()
  get_filename_component(extension "${file}" LAST_EXT)
  string(SUBSTRING "${extension}" 1 -1 extension)
  if(NOT DEFINED ${extension})
    message(FATAL_ERROR "${file}: no type is known for .${extension}")
  endif()
  string(APPEND table "    {\"/${file}\", \"${${extension}}\", R\"page(${content})page\"},\n")
endforeach()
file(WRITE "${OUT}" "// Written by the build.
#include \"Asset.h\"

#include <algorithm>

namespace qvdevice {

static constexpr Asset kAssets[] = {
${table}};

const Asset* assetAt(std::string_view path) {
  const std::string_view wanted = path == \"/\" ? \"/index.html\" : path;
  const auto* const found =
      std::find_if(std::begin(kAssets), std::end(kAssets), [wanted](const Asset& each) { return each.path == wanted; });
  return found == std::end(kAssets) ? nullptr : found;
}

} // namespace qvdevice
")
