// support/LogLine.h: the lines of the debug log. Pure text: no Windows header, no globals.
//
// Shapes  ANSI bytes, lines without their line end. An entry's code is 0 at a procedure's entry, 999 at its exit,
//         -1 for free text; any other number is written behind the text. One blank of indentation a procedure.
// Errors  none: every text and every code has a line.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace LogLine {

enum Code : std::int32_t { Entry = 0, Exit = 999, FreeText = -1 };

// The log's mode: any number but 0 and this one is a file, and a bit of it adds time stamps.
inline constexpr std::int32_t RegistryTrace = -1;
inline constexpr std::int32_t WithTimeStamps = 16;

// The entry as it stands behind time stamp and indentation: "<name>_", "</name>", the text, or the text and the code.
[[nodiscard]] std::string EntryText(std::string_view text, std::int32_t code);

// Replaces the first occurrence of each German umlaut (and of the sharp s) of Windows-1252 by two letters. The pairs
// of the lower-case letters are "oe", "ae" and "ua", in this order: readers of the log know them so.
void FoldUmlauts(std::string& text);

[[nodiscard]] std::string ErrorText(std::int32_t number, std::string_view description);

// The indentation of the entries that follow one of `code`: an entry adds a blank, and a 51st starts again with one.
void IndentAfter(std::int32_t code, std::string& indent);
// The indentation of the entry itself: an exit stands where its entry stood.
void IndentBefore(std::int32_t code, std::string& indent);

// Seconds with at most seven digits, as a single-precision number has them, and ":".
[[nodiscard]] std::string TimeStamp(float seconds, std::string_view decimalSeparator);

// `folder` and the log file's name for `product`.
[[nodiscard]] std::string FilePath(std::string_view folder, std::string_view product);
// A path that is wrapped in double quotes loses all double quotes in it.
[[nodiscard]] std::string WithoutQuotes(std::string_view path);
// The name that the log had in earlier versions: without ".xml".
[[nodiscard]] std::string OldFilePath(std::string_view path);

}  // namespace LogLine
