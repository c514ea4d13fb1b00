#pragma once

/// What a picture and perchly-draw say to each other: serialised variants, each after its length in four bytes, the
/// answers in the order of the requests.
namespace drawing {

/// Whether a PNG file is wanted, the kind's number, value, colour (#rrggbb, or none), percent, weight, sizes.
inline constexpr const char* requestType = "(bqaysuuau)";
/// The drawn a(iiay) or ay.
inline constexpr const char* answerType = "v";
/// What a decoder answers: the picture as a PNG file, and its outline's file where it has one. Both empty where the
/// bytes do not decode.
inline constexpr const char* decodedType = "(ayay)";

} // namespace drawing
