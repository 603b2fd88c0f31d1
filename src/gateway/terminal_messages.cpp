#include "gateway/terminal_messages.h"

namespace gw {
namespace {
using jt808::Edition;
using jt808::Reader;
using jt808::Writer;

struct RegistrationSizes {
  size_t maker, model, terminalId;
};
RegistrationSizes SizesOf(Edition edition) {
  return edition == Edition::k2019 ? RegistrationSizes{11, 30, 30} : RegistrationSizes{5, 20, 7};
}
constexpr size_t kImeiBytes = 15;
constexpr size_t kSoftwareBytes = 20;
constexpr size_t kPositionBytes = 28;
}  // namespace

jt808::Bytes EncodeRegistration(const Registration& r, Edition edition) {
  const RegistrationSizes sizes = SizesOf(edition);
  Writer w;
  w.U16(r.province).U16(r.city).Fixed(r.maker, sizes.maker).Fixed(r.model, sizes.model);
  w.Fixed(r.terminalId, sizes.terminalId).U8(r.plateColor).Gbk(r.plate);
  return w.Take();
}

Registration DecodeRegistration(jt808::ByteView body, Edition edition) {
  const RegistrationSizes sizes = SizesOf(edition);
  Reader r(body);
  Registration out;
  out.province = r.U16();
  out.city = r.U16();
  out.maker = r.FixedText(sizes.maker);
  out.model = r.FixedText(sizes.model);
  out.terminalId = r.FixedText(sizes.terminalId);
  out.plateColor = r.U8();
  out.plate = r.Gbk(r.Left());
  return out;
}

jt808::Bytes EncodeRegisterResult(const RegisterResult& answer) {
  Writer w;
  w.U16(answer.serial).U8(answer.result);
  if (answer.result == kRegisterOk) w.Raw(answer.code);
  return w.Take();
}

RegisterResult DecodeRegisterResult(jt808::ByteView body) {
  Reader r(body);
  RegisterResult out;
  out.serial = r.U16();
  out.result = r.U8();
  out.code = r.RawText(r.Left());
  return out;
}

jt808::Bytes EncodeAuthentication(const Authentication& a, Edition edition) {
  Writer w;
  if (edition == Edition::k2013) return w.Raw(a.code).Take();
  w.U8(a.code.size()).Raw(a.code).Fixed(a.imei, kImeiBytes).Fixed(a.software, kSoftwareBytes);
  return w.Take();
}

Authentication DecodeAuthentication(jt808::ByteView body, Edition edition) {
  Reader r(body);
  Authentication out;
  if (edition == Edition::k2013) {
    out.code = r.RawText(r.Left());
    return out;
  }
  out.code = r.RawText(r.U8());
  out.imei = r.FixedText(kImeiBytes);
  out.software = r.FixedText(kSoftwareBytes);
  return out;
}

jt808::Bytes EncodeGeneralAnswer(const GeneralAnswer& answer) {
  return Writer().U16(answer.serial).U16(answer.message).U8(answer.result).Take();
}

GeneralAnswer DecodeGeneralAnswer(jt808::ByteView body) {
  Reader r(body);
  GeneralAnswer out;
  out.serial = r.U16();
  out.message = r.U16();
  out.result = r.U8();
  return out;
}

jt808::Bytes EmptyPosition() { return jt808::Bytes(kPositionBytes, 0); }

}  // namespace gw
