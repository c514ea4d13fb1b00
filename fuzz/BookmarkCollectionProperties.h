#pragma once

#include <string_view>

namespace perchly::fuzz {

/// Ends the process unless these hold for the bytes as a bookmark document: decoding does not depend on spare capacity;
/// what is accepted can be encoded in both styles and reads back equal, byte for byte in the second turn;
/// merging it into a list with duplicates follows the rules of the merge.
void checkBookmarkDocument(std::string_view bytes);

} // namespace perchly::fuzz
