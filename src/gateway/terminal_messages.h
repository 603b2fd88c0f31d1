// The messages of a terminal's own life on the gateway: registration and its
// answer, authentication, heartbeats, position reports and the platform's
// general answer. Both editions; the encoders serve the simulated terminals,
// the decoders the gateway. Decoders throw jt808::BodyError on a short body.
#pragma once

#include <cstdint>
#include <string>

#include "jt808/bytes.h"
#include "jt808/codec.h"

namespace gw {

constexpr uint16_t kHeartbeat = 0x0002;
constexpr uint16_t kLogout = 0x0003;
constexpr uint16_t kRegister = 0x0100;
constexpr uint16_t kAuthenticate = 0x0102;
constexpr uint16_t kPosition = 0x0200;
constexpr uint16_t kBatchPositions = 0x0704;
constexpr uint16_t kMediaData = 0x0801;
constexpr uint16_t kRegisterAnswer = 0x8100;
constexpr uint16_t kMediaDataAnswer = 0x8800;

// Results of the registration answer.
constexpr int kRegisterOk = 0;
constexpr int kRegisterNoVehicle = 2;
constexpr int kRegisterNoTerminal = 4;

struct Registration {
  int province = 0;
  int city = 0;
  std::string maker;       // 5 bytes (2013), 11 bytes (2019)
  std::string model;       // 20 bytes (2013), 30 bytes (2019)
  std::string terminalId;  // 7 bytes (2013), 30 bytes (2019)
  int plateColor = 0;
  std::string plate;  // UTF-8
};
jt808::Bytes EncodeRegistration(const Registration& registration, jt808::Edition edition);
Registration DecodeRegistration(jt808::ByteView body, jt808::Edition edition);

struct RegisterResult {
  uint16_t serial = 0;  // the registration's serial number
  int result = kRegisterOk;
  std::string code;  // the authentication code, with result kRegisterOk
};
jt808::Bytes EncodeRegisterResult(const RegisterResult& answer);
RegisterResult DecodeRegisterResult(jt808::ByteView body);

// The 2013 body is the code alone; the 2019 body leads with the code's
// length and adds the IMEI (15 bytes) and the software version (20 bytes).
struct Authentication {
  std::string code;
  std::string imei;
  std::string software;
};
jt808::Bytes EncodeAuthentication(const Authentication& authentication, jt808::Edition edition);
Authentication DecodeAuthentication(jt808::ByteView body, jt808::Edition edition);

// The platform's general answer to a terminal message (0x8001).
struct GeneralAnswer {
  uint16_t serial = 0;
  uint16_t message = 0;
  int result = jt808::kResultOk;
};
jt808::Bytes EncodeGeneralAnswer(const GeneralAnswer& answer);
GeneralAnswer DecodeGeneralAnswer(jt808::ByteView body);

// A position report with no alarm, no fix and nothing else (28 bytes).
jt808::Bytes EmptyPosition();

}  // namespace gw
