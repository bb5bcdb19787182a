#pragma once

// Every text the parser writes in its red log lines. Texts with pieces
// around a value are split where the value goes.
namespace tavrin::plugin::json::messages::parser {

// Cursor and words.
inline constexpr char kReadPastEnd[] = " unexpected _token!";
inline constexpr char kWordMismatch[] = "_token error!";
// Type detection: "can't detect the type of" TEXT ",please check string format!"
inline constexpr char kUnknownType[] = "can't detect the type of";
inline constexpr char kUnknownTypeEnd[] = ",please check string format!";

// Numbers.
inline constexpr char kIntegerNoDigit[] = "digit format error!";
inline constexpr char kIntegerLeadingZero[] = " digit format error!";
inline constexpr char kDoubleNoDigit[] = "dobule digit format error!";
inline constexpr char kDoubleLeadingZero[] = " Parse Double err!";
inline constexpr char kDoubleBadPart[] = " dobule digit format error!";
inline constexpr char kFractionBadPart[] = " Fraction digit format error!";
inline constexpr char kFractionLeadingZero[] = " Parse Fraction err!";

// Strings.
inline constexpr char kStringNoQuote[] = " string format error!";
inline constexpr char kStringBadUnicodeEscape[] = ":string format error!";
inline constexpr char kStringBadCharacter[] = "string format error!";

// Values and containers.
inline constexpr char kTopLevelNotContainer[] =
    " can't find \"{\" or \"[\", please check string format!";
inline constexpr char kUnknownKind[] = " can't detect json type,please check string format!";
// " nesting deeper than " DEPTH " levels, please check string format!"
inline constexpr char kTooDeep[] = " nesting deeper than ";
inline constexpr char kTooDeepEnd[] = " levels, please check string format!";
// Followed by the whole text.
inline constexpr char kArrayNoOpening[] = " can't find \"[\", Array format error:";
inline constexpr char kArrayNoClosing[] = "can't find \"]\", Array format error:";
inline constexpr char kObjectNoOpening[] = "can't find \"{\", Object format error:";
inline constexpr char kObjectNoClosing[] = "can't find \"}\", Object format error:";
inline constexpr char kKeyFailed[] = "parse key fail:";
// Followed by the member's key.
inline constexpr char kValueFailed[] = "can't parse the value of ";

}  // namespace tavrin::plugin::json::messages::parser
