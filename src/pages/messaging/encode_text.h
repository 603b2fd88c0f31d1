// The one conversion of free text typed by the user into the string value of
// a JSON parameter: code page 936 bytes, form-encoded when they hold "+" or "%".
#pragma once

#include <string>
#include <string_view>

std::string EncodeTextParam(std::string_view text);
