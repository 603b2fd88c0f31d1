// Text encodings. Inside the program every text is UTF-8; code page 936
// (GBK) is what terminals and the host's narrow texts use; the plug-in
// boundary passes wide texts as UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace txt {
// Characters without a mapping, and invalid input, become the code page's default character '?'.
std::string Utf8ToGbk(std::string_view utf8);
// Invalid sequences become U+FFFD.
std::string GbkToUtf8(std::string_view gbk);
std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);

bool IsValidUtf8(std::string_view text);
// Invalid bytes become U+FFFD.
std::string SanitizeUtf8(std::string_view text);
// Number of Unicode characters.
size_t Utf8Length(std::string_view text);
// The first maxChars characters, never splitting one.
std::string Utf8Left(std::string_view text, size_t maxChars);

// Form encoding of bytes: "*", "-", ".", digits, letters and "_" stay, a space
// becomes "+", every other byte "%XX" (upper-case hexadecimal).
std::string FormEncode(std::string_view bytes);
// Undoes it ("+" and "%XX"). Only a text with a "%XX" is form-encoded: any
// other went out as typed and comes back unchanged.
std::string FormDecode(std::string_view text);
}  // namespace txt
