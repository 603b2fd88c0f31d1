// Free text to the bytes of a JSON string value (see encode_text.h).
#include "pages/messaging/encode_text.h"

#include "text/encoding.h"

std::string EncodeTextParam(std::string_view text) {
  std::string bytes = txt::Utf8ToGbk(text);
  if (bytes.find_first_of("+%") == std::string::npos) return bytes;
  return txt::FormEncode(bytes);
}
