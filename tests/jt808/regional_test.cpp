// The provincial form of transparent data (0x8900, JT/T 808-2013 table of
// downlink transparent data: the message type, then the content): the
// sub-type is the type, the content is the "SCRAPYARD" byte, the record
// fields of the sub-type and the note.
#include <gtest/gtest.h>

#include "body_table.h"

namespace jt808 {
namespace {
using bodies::Body;
using bodies::HexOf;
using bodies::Refusal;

TEST(RegionalCodecs, CarryTheProvincialTransparentData) {
  const Body cases[] = {
      {"roof light: sub-type 199, the note", 0x8900, R"({"SCNOTE":"Vacant","SCRAPYARD":1,"SCTYPE":199})",
       "c7 01 " + HexOf("Vacant")},
      {"external screen without a note", 0x8900, R"({"SCRAPYARD":1,"SCTYPE":194})", "c2 01"},
      {"identity query: the first id, the others in the note", 0x8900,
       R"({"SCID":5,"SCNOTE":"7;9","SCRAPYARD":1,"SCTYPE":197})", "c5 01 00 00 00 05 " + HexOf("7;9")},
      {"waybill query of every record", 0x8900, R"({"SCID":-1,"SCRAPYARD":1,"SCTYPE":193})", "c1 01 ff ff ff ff"},
      {"identity record: id, operation, business, note", 0x8900,
       R"({"SCBUSINESS":0,"SCID":42,"SCNOTE":"U1,Li Ming,F9","SCOPER":3,"SCRAPYARD":1,"SCTYPE":196})",
       "c4 01 00 00 00 2a 03 00 " + HexOf("U1,Li Ming,F9")},
      {"a plain type beside the sub-types stays plain", 0x8900, R"({"CMC":"x","CMT":195})", "c3 " + HexOf("x")},
  };
  for (const Body& c : cases) bodies::Check(c);
}

TEST(RegionalCodecs, RefuseWhatTheBodiesCannotCarry) {
  const Refusal cases[] = {
      {"a sub-type the terminals do not know", 0x8900, R"({"SCRAPYARD":1,"SCTYPE":195})"},
      {"an id beyond 32 bits", 0x8900, R"({"SCID":4294967296,"SCRAPYARD":1,"SCTYPE":197})"},
      {"a record cut short in its id", 0x8900, "", "c4 01 00 00"},
  };
  for (const Refusal& c : cases) bodies::Check(c);
}

}  // namespace
}  // namespace jt808
