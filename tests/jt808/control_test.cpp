// Terminal control, transparent data and the platform's RSA key as their
// bodies carry them. Layouts: JT/T 808-2013 tables of 0x8105 (terminal
// control, with the parameter lists of command words 1 and 2 separated by
// ";"), 0x8900 and 0x8A00; the 2019 edition keeps them. The taxi terminals'
// upgrade and the wake-up (word 8) travel in the same text form with their
// own lists.
#include <gtest/gtest.h>

#include "body_table.h"

namespace jt808 {
namespace {
using bodies::Body;
using bodies::HexOf;
using bodies::Refusal;

const std::string kZeros124 = [] {
  std::string hex;
  for (int i = 0; i < 124; ++i) hex += " 00";
  return hex;
}();

TEST(ControlCodecs, CarryThePagesParameters) {
  const Body cases[] = {
      {"0x8105 upgrade: word 1 and its eleven parameters", 0x8105,
       R"({"ADD":"10.0.0.8","Command":1,"DICT":"","DINA":"cmnet","DIPWD":"","HAV":"","LITI":"30","PRID":"1234567890",)"
       R"("SOV":"FW3.2.8","TCP":"6608","UDP":"","URL":"http%3A%2F%2Ffw.example.com%2Ft13%3Fv%3D2%25"})",
       "01 " + HexOf("http://fw.example.com/t13?v=2%;cmnet;;;10.0.0.8;6608;;1234567890;;FW3.2.8;30")},
      {"0x8105 connect to a server: word 2 and its nine parameters", 0x8105,
       R"({"ADD":"10.0.0.9","AUT":"AUTH01","COCT":0,"Command":2,"DICT":"user","DINA":"cmnet","DIPWD":"pass",)"
       R"("LITI":"10","TCP":"7000","UDP":"7001"})",
       "02 " + HexOf("0;AUTH01;cmnet;user;pass;10.0.0.9;7000;7001;10")},
      {"0x8105 switch back as other platforms send it: the connection control alone", 0x8105,
       R"({"COCT":1,"Command":2})", "02 " + HexOf("1"), "", true},
      {"0x8105 taxi upgrade: word 1, the device type, then fifteen parameters in all", 0x8105,
       R"({"ADD":"upgrade.example.com","Command":1,"DICT":"","DINA":"","DIPWD":"","DTYPE":3,"FFN":"","FFS":"",)"
       R"("FIV":"","HAV":"99","PRID":"255","PSW":"","SOV":"9999","TCP":"9000","URL":"","USR":""})",
       "01 " + HexOf("3;255;99;9999;;;;upgrade.example.com;9000;;;;;;")},
      {"0x8105 wake-up for given seconds", 0x8105, R"({"Command":8,"Flag":600})", "08 " + HexOf("600")},
      {"0x8105 wake-up for the terminal's own time", 0x8105, R"({"Command":8})", "08"},
      {"0x8900: type and the content to the end", 0x8900, R"({"CMC":"PASS%2BTHROUGH+50%25","CMT":240})",
       "f0 " + HexOf("PASS+THROUGH 50%")},
      {"0x8A00: exponent and the modulus in 128 bytes, filled from the right", 0x8A00,
       R"({"E":65537,"N_S":"9F1C22AB"})", "00 01 00 01" + kZeros124 + " 9f 1c 22 ab"},
      {"0x8A00: odd and lower-case digits read back in whole upper-case bytes", 0x8A00, R"({"E":3,"N_S":"abc"})",
       "00 00 00 03" + kZeros124 + " 00 00 0a bc", R"({"E":3,"N_S":"0ABC"})"},
  };
  for (const Body& c : cases) bodies::Check(c);
}

TEST(ControlCodecs, RefuseWhatTheBodiesCannotCarry) {
  const Refusal cases[] = {
      {"no command word", 0x8105, R"({"Flag":600})"},
      {"a separator inside a parameter", 0x8105, R"({"Command":1,"DINA":"cm;net"})"},
      {"a wake-up beyond a word", 0x8105, R"({"Command":8,"Flag":65536})"},
      {"an exponent beyond a double word", 0x8A00, R"({"E":4294967296,"N_S":"01"})"},
      {"a modulus of 129 bytes", 0x8A00, R"({"E":3,"N_S":")" + std::string(258, 'F') + R"("})"},
      {"a modulus that is no hexadecimal", 0x8A00, R"({"E":3,"N_S":"XYZ"})"},
      {"an upgrade with two parameters", 0x8105, "", "01 " + HexOf("a;b")},
      {"a wake-up time that is no number", 0x8105, "", "08 " + HexOf("x")},
      {"a modulus of 127 bytes", 0x8A00, "", "00 00 00 03" + kZeros124 + " 01 02 03"},
  };
  for (const Refusal& c : cases) bodies::Check(c);
}

TEST(ControlCodecs, ThePlatformsOwnNumbersHaveNoTerminalMessage) {
  // Regional vehicle control, alarm control on and off, oil and power
  // cut-off, the taxi IC card blacklist and the inspection settings.
  for (int command : {0x8F00, 0x8B0A, 0x8B0B, 0xA006, 0x8106, 0x9706, 0x9720}) {
    EXPECT_EQ(FindCommand(command), nullptr) << std::hex << command;
  }
}

}  // namespace
}  // namespace jt808
