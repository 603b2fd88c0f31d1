// The driving recorder's own frames and data blocks, as the tachograph
// messages carry them. A command to the recorder is framed AA 75, its answer
// 55 7A: command word, a two-byte data length, a reserved byte, the data and
// the exclusive or of everything before it.
//
// The data of an answer follows the recorder's edition (2003 or 2012) and
// command word; on the platform's side it becomes the reply members the
// pages read ("DTM", "MILE", "Item" ...), with "VER" telling the edition.
#pragma once

#include <cstdint>
#include <optional>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808::recorder {

enum class Standard { k2003, k2012 };
constexpr int kVersion2003 = 2003, kVersion2012 = 2012;

// Command words of the 2012 edition that ask for records in a time range.
bool IsRangeWord(int word);
// Command words only the 2012 edition has (its version word and most record words).
bool Only2012(int word);

Bytes CommandFrame(int word, ByteView data);
Bytes AnswerFrame(int word, ByteView data);
// The data of a frame; BodyError for a wrong lead, word, length or check byte.
ByteView CommandData(ByteView frame, int word);
ByteView AnswerData(ByteView frame, int word);

// The edition a reply object is written in: the 2012 edition when it says
// so ("VER" 2012), or the word exists only there; otherwise the 2003 one.
Standard ReplyStandard(int word, const Json::Value& reply);
// The edition of an answer's data, told by its length where the editions
// differ; `requested` (the request's "VER") settles the lengths both share.
Standard DataStandard(int word, size_t size, int requested);

// An answer's data from its reply members, and back. BodyError when a
// member does not fit its field or the data does not read.
Bytes WriteAnswer(int word, Standard standard, const Json::Value& reply);
Json::Value ReadAnswer(int word, Standard standard, ByteView data);

}  // namespace jt808::recorder
