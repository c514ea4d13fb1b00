#include "JsonCases.h"

namespace perchly::tests {

namespace {

std::string repeated(std::string_view text, std::size_t times)
{
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

} // namespace

std::vector<JsonCase> wellFormedCases()
{
    return {
        { "EmptyArray", "[]" },
        { "EmptyArrayWithBlank", "[ ]" },
        { "ArraysWithBlanks", "[[]   ]" },
        { "ArrayOfEmptyText", R"([""])" },
        { "ArrayEndingWithLineFeed", "[\"a\"]\n" },
        { "ArrayOfFalse", "[false]" },
        { "ArrayOfTrue", "[true]" },
        { "ArrayOfNull", "[null]" },
        { "MixedArray", R"([null, 1, "1", {}])" },
        { "ArrayWithLineFeedBeforeComma", "[1\n,1]" },
        { "ArrayWithLeadingBlank", " [1]" },
        { "ArrayWithTrailingBlank", "[2] " },
        { "ArrayWithManyNulls", "[1,null,null,null,2]" },
        { "AllWhiteSpace", " \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 \t\r\n] \t\r\n" },
        { "LonelyText", R"("asd")" },
        { "LonelyEmptyText", R"("")" },
        { "LonelyTrue", "true" },
        { "LonelyFalse", "false" },
        { "LonelyNull", "null" },
        { "LonelyInteger", "42" },
        { "LonelyNegativeFloat", "-0.1" },
        { "Zero", "[0]" },
        { "NegativeZero", "[-0]" },
        { "NegativeZeroFloat", "[-0.0]" },
        { "NegativeInteger", "[-123]" },
        { "NegativeOne", "[-1]" },
        { "Integer", "[123]" },
        { "IntegerAfterBlank", "[ 4]" },
        { "Float", "[123.456789]" },
        { "FloatThatLooksLikeInteger", "[1.000000000]" },
        { "FloatCloseToZero", "[-0.000000000000000000000000000000000000000000000000000000000000000000000000000001]" },
        { "FloatOfManyDigits", "[0.1000000000000000055511151231257827021181583404541015625]" },
        { "ZeroToAPower", "[0e1]" },
        { "ZeroToAPositivePower", "[0e+1]" },
        { "IntegerWithPower", "[1E22]" },
        { "PowerWithNegativeSign", "[1E-2]" },
        { "PowerWithPositiveSign", "[1E+2]" },
        { "SmallPower", "[20e1]" },
        { "PowerWithLeadingZeros", "[1e0002]" },
        { "FloatWithPower", "[123.456e78]" },
        { "FloatWithNegativePower", "[123e-10000000]" },
        { "IntegerOfTwentyDigits", "[12345678901234567890]" },
        { "IntegerBelow64Bits", "[-123123123123123123123123123123]" },
        { "IntegerBeyond64Bits", "[100000000000000000000]" },
        { "TwoIntegersBeyond64Bits", "[100000000000000000000,{\"a\":-200000000000000000000 }]" },
        { "LargestInteger", "[18446744073709551615]" },
        { "SmallestInteger", "[-9223372036854775808]" },
        { "LargestFloat", "[1.7976931348623157e308]" },
        { "EmptyObject", "{}" },
        { "ObjectWithBlank", "{ }" },
        { "Object", R"({"asd":"sdf", "dfg":"fgh"})" },
        { "ObjectWithOneKey", R"({"a":[]})" },
        { "ObjectWithEmptyKey", R"({"":0})" },
        { "ObjectWithRepeatedKey", R"({"a":"b","a":"c"})" },
        { "ObjectWithRepeatedKeyAndValue", R"({"a":"b","a":"b"})" },
        { "ObjectWithEscapedNulInKey", R"({"foo\u0000bar": 42})" },
        { "ObjectWithExtremeNumbers", R"({ "min": -1.0e+28, "max": 1.0e+28 })" },
        { "ObjectWithLongTexts",
            R"({"x":[{"id": ")" + std::string(200, 'x') + R"("}], "id": ")" + std::string(200, 'y') + "\"}" },
        { "ObjectWithUnicodeEscapes", R"({"title":"\u041f\u043e\u043b\u0442\u043e\u0440\u0430"})" },
        { "ObjectWithLineFeeds", "{\n\"a\": \"b\"\n}" },
        { "NestedObjects", R"({"a":{"b":{"c":[{"d":{}}]}}})" },
        { "FiveHundredLevels", repeated("[", 500) + repeated("]", 500) },
        { "TextWithOneTwoAndThreeByteEscapes", R"(["\u0060\u012a\u12AB"])" },
        { "TextWithSurrogatePair", R"(["\uD801\udc37"])" },
        { "TextWithTwoSurrogatePairs", R"(["\ud83d\ude39\ud83d\udc8d"])" },
        { "TextWithLastSurrogatePair", R"(["\uDBFF\uDFFE"])" },
        { "TextWithAllEscapes", R"(["\"\\\/\b\f\n\r\t"])" },
        { "TextWithEscapedBackslashBeforeU", R"(["\\u0000"])" },
        { "TextWithEscapedQuote", R"(["\""])" },
        { "TextWithCommentInside", R"(["a/*b*/c/*d//e"])" },
        { "TextWithBackslashAndLetter", R"(["\\a"])" },
        { "TextWithBackslashAndN", R"(["\\n"])" },
        { "TextWithEscapedControlCharacter", R"(["\u0012"])" },
        { "TextWithEscapedNonCharacter", R"(["\uFFFF"])" },
        { "TextWithEscapedNul", R"(["\u0000"])" },
        { "TextWithEscapedLineFeed", R"(["new\u000Aline"])" },
        { "TextWithEscapedQuoteByCode", R"(["\u0022"])" },
        { "TextWithEscapedBackslashByCode", R"(["\u005C"])" },
        { "TextWithEscapedDelete", R"(["\u007F"])" },
        { "TextWithInvisiblePlus", R"(["\u2064"])" },
        { "TextWithEscapedByteOrderMark", R"(["\uFEFF"])" },
        { "TextWithNonCharacterPair", R"(["\uD83F\uDFFE"])" },
        { "TextInArrayAfterBlank", R"([ "asd"])" },
        { "TextWithDelete", "[\"a\x7F\"]" },
        { "TextWithTwoByteCharacter", "[\"\xC3\xBC\"]" },
        { "TextWithThreeByteCharacter", "[\"\xE2\x82\xAC\"]" },
        { "TextWithFourByteCharacter", "[\"\xF0\x9F\x98\x80\"]" },
        { "TextWithLastCodePoint", "[\"\xF4\x8F\xBF\xBF\"]" },
        { "TextWithNonCharacter", "[\"\xEF\xBF\xBF\"]" },
        { "TextWithLineSeparators", "[\"\xE2\x80\xA8\xE2\x80\xA9\"]" },
        { "TextWithByteOrderMarkInside", "[\"\xEF\xBB\xBF\"]" },
        { "TextAcrossABlock", "[\"" + std::string(61, 'x') + "\\\\\", \"" + std::string(63, 'y') + "\\\"\"]" },
    };
}

std::vector<JsonCase> acceptedChoices()
{
    return {
        { "NumberTooSmallForAFloat", "[1e-400]" },
        { "NumberFarTooSmallForAFloat", "[-0.0e-99999999999999]" },
        { "NumberOfManyZeros", "[0." + std::string(1000, '0') + "1]" },
    };
}

} // namespace perchly::tests
