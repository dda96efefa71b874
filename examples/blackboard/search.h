// Searching a mapped file piece by piece.
#pragma once

#include <string>

#include "board.h"

namespace blackboard {

constexpr std::size_t longestWord = 200;    // bytes
constexpr DWORD smallestPiece = 128 << 10;  // bytes

// Posts every place of the word, in order. At no time is more than one piece of the file mapped.
// `pieceSize` has smallestPiece bytes or more. Throws Error.
void searchFile(const std::string& path, const std::string& word, DWORD pieceSize, Board& board);

}  // namespace blackboard
