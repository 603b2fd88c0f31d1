// The driving recorder's command words in its two standard editions, their
// names, and the decoding of a recorder answer into readable text.
//
// An answer is the reply object the terminal relays: the recorder's fields as
// members ("DTM", "MILE" ...) and, for the record words, an "Item" array of
// records. Decoding never fails: a member that is absent or of another type
// reads as 0 or the empty text, a record that is not an object is skipped.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <span>
#include <string>

namespace recorder {

enum class Edition { k2003, k2012 };

// The entry of the word list that stands for every word of the edition.
constexpr int kAllWords = 0xFF;

// The words that have a name in an edition, ascending.
std::span<const int> Words(Edition edition);
// The record words: those a request gives a time range and a block count.
bool IsRecordWord(int word);
// "<name>(08H)", or the all-words name alone; "" for a word the edition does not name.
std::string WordName(Edition edition, int word);

// The text of an answer: an answer of the other edition gives its note and is
// not decoded (word 0x02 is never checked); a word without decoder gives "".
std::string DecodeAnswer(Edition edition, int word, const Json::Value& answer);
// The text of an answer already known to be of the edition.
std::string Decode(Edition edition, int word, const Json::Value& answer);

// "%d.%04d" degrees of a coordinate in 1/10000 minute.
std::string Degrees(int64_t value);

}  // namespace recorder
