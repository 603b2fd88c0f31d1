// The terminal's event list and information menu, a question to the driver
// with the driver's answer, and one piece of information service. The 2019
// edition of the protocol no longer lists these messages; its terminals that
// still take them read the same bodies, so both editions share one layout.
#include "jt808/codec.h"
#include "jt808/codecs/fields.h"

namespace jt808 {
namespace {
constexpr int kSetEvents = 0x8301, kQuestion = 0x8302, kSetInfoMenu = 0x8303, kInfoService = 0x8304;
constexpr uint16_t kQuestionAnswer = 0x0302;

namespace key {
constexpr const char *kType = "SETP", *kItems = "EVIT", *kText = "TEXT", *kCount = "Count", *kEventId = "EVID",
                      *kInfoType = "INTY", *kFlag = "Flag", *kQuestion = "QS", *kAnswers = "ANSL", *kAnswerId = "ASR",
                      *kInfo = "TextInfo";
}  // namespace key

// Setting types of the event list (the menu knows the first four).
constexpr int kDeleteAll = 0, kDeleteGiven = 4;

// What tells the event list and the information menu apart on the wire.
struct ListKind {
  const char* idKey;     // the item's identifier in each "EVIT" object
  bool wordLength;       // the item text's length is a word (menu) or a byte (events)
  bool countKey;         // the parameter object carries "Count"
  bool bareDeleteAll;    // deleting all sends the type alone
  bool idsOnlyOnDelete;  // deleting given items sends their identifiers without texts
};
constexpr ListKind kEvents{key::kEventId, false, true, true, true};
constexpr ListKind kMenu{key::kInfoType, true, false, false, false};

// Setting type, item count, then per item its identifier and its text. The
// type decides what goes: deleting all needs no items, deleting given events
// no texts, whatever rows the page sent along.
Bytes EncodeList(const ListKind& kind, const Json::Value& param) {
  const int type = static_cast<int>(fields::Int(param, key::kType, 0, fields::kByte));
  Writer w;
  w.U8(type);
  if (type == kDeleteAll) {
    if (!kind.bareDeleteAll) w.U8(0);
    return w.Take();
  }
  const std::vector<Json::Value> items = fields::Items(param, key::kItems);
  w.U8(items.size());
  for (const Json::Value& item : items) {
    w.U8(fields::Int(item, kind.idKey, 0, fields::kByte));
    const std::string text = kind.idsOnlyOnDelete && type == kDeleteGiven ? std::string() : WireText(item, key::kText);
    kind.wordLength ? fields::WordLengthText(w, text) : fields::ByteLengthText(w, text);
  }
  return w.Take();
}

Json::Value DecodeList(const ListKind& kind, ByteView body) {
  Reader r(body);
  Json::Value param(Json::objectValue);
  param[key::kType] = r.U8();
  const int count = r.AtEnd() ? 0 : r.U8();
  for (int i = 0; i < count; ++i) {
    Json::Value item(Json::objectValue);
    item[kind.idKey] = r.U8();
    item[key::kText] = PageText(kind.wordLength ? fields::WordLengthText(r) : fields::ByteLengthText(r));
    param[key::kItems].append(std::move(item));
  }
  if (kind.countKey) param[key::kCount] = count;
  return param;
}

const RegisterCommand kEventList{kSetEvents,
                                 {kSetEvents, kGeneralReply,
                                  [](const Json::Value& param, Edition) { return EncodeList(kEvents, param); },
                                  [](ByteView body, Edition) { return DecodeList(kEvents, body); }}};

const RegisterCommand kInfoMenu{kSetInfoMenu,
                                {kSetInfoMenu, kGeneralReply,
                                 [](const Json::Value& param, Edition) { return EncodeList(kMenu, param); },
                                 [](ByteView body, Edition) { return DecodeList(kMenu, body); }}};

// Flag, the question with a byte for its length, then each answer: its
// identifier and its text with a word for its length.
const RegisterCommand kAsk{kQuestion,
                           {kQuestion, kQuestionAnswer,
                            [](const Json::Value& param, Edition) {
                              Writer w;
                              w.U8(fields::Int(param, key::kFlag, 0, fields::kByte));
                              fields::ByteLengthText(w, WireText(param, key::kQuestion));
                              for (const Json::Value& answer : fields::Items(param, key::kAnswers)) {
                                w.U8(fields::Int(answer, key::kAnswerId, 0, fields::kByte));
                                fields::WordLengthText(w, WireText(answer, key::kText));
                              }
                              return w.Take();
                            },
                            [](ByteView body, Edition) {
                              Reader r(body);
                              Json::Value param(Json::objectValue);
                              param[key::kFlag] = r.U8();
                              param[key::kQuestion] = PageText(fields::ByteLengthText(r));
                              while (!r.AtEnd()) {
                                Json::Value answer(Json::objectValue);
                                answer[key::kAnswerId] = r.U8();
                                answer[key::kText] = PageText(fields::WordLengthText(r));
                                param[key::kAnswers].append(std::move(answer));
                              }
                              return param;
                            }}};

// The driver's answer: the question's serial number and the chosen answer.
const RegisterAnswer kDriverAnswer{kQuestionAnswer,
                                   {true,
                                    [](ByteView body, const AnswerContext&) {
                                      Reader r(body);
                                      r.U16();
                                      Json::Value reply(Json::objectValue);
                                      reply[key::kAnswerId] = r.U8();
                                      return reply;
                                    },
                                    [](const Json::Value& reply, const AnswerContext& context) {
                                      // A question without answers is only acknowledged.
                                      if (!reply.isMember(key::kAnswerId)) return Bytes();
                                      return Writer()
                                          .U16(context.serial)
                                          .U8(fields::Int(reply, key::kAnswerId, 0, fields::kByte))
                                          .Take();
                                    }}};

// Information type and the text with a word for its length.
const RegisterCommand kInfo{kInfoService,
                            {kInfoService, kGeneralReply,
                             [](const Json::Value& param, Edition) {
                               Writer w;
                               w.U8(fields::Int(param, key::kInfoType, 0, fields::kByte));
                               fields::WordLengthText(w, WireText(param, key::kInfo));
                               return w.Take();
                             },
                             [](ByteView body, Edition) {
                               Reader r(body);
                               Json::Value param(Json::objectValue);
                               param[key::kInfoType] = r.U8();
                               param[key::kInfo] = PageText(fields::WordLengthText(r));
                               return param;
                             }}};

}  // namespace
}  // namespace jt808
