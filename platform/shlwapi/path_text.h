// Places in the text of a path, found character by character in the machine's code page.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// The offsets of all backslashes that are characters of their own.
std::vector<std::size_t> backslashesOf(std::string_view path);

// The length of the root, its backslash included: "C:\", "\", "\\", "\\server", "\\server\share".
// 0: the path has no root; a bare "C:" has none.
std::size_t rootLength(std::string_view path);
