// The pages that send typed values: data pass-through (a message type and its
// content) and the platform's RSA public key (exponent and modulus).
#pragma once

#include <cstdint>
#include <string>

#include "pages/control/control_page.h"

class CDlgCDMAData : public CControlPage {
 public:
  static constexpr int kTemplate = 4036;
  static constexpr int32_t kCommand = 0x8900;
  static constexpr int kFunctionType = 31;
  enum Control : int { kTypeLabel = 4303, kTypeEdit = 4301, kTypeHint = 4304, kContentLabel = 4305, kContentEdit = 4302 };
  enum Text : int { kTextType = 13480, kTextTypeHint = 20586, kTextContent = 20587 };

  static plat::DialogTemplate Layout();
  CDlgCDMAData();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  bool ReadControls() override;

 private:
  std::string type_;
  std::string content_;
};

class CDlgRSA : public CControlPage {
 public:
  static constexpr int kTemplate = 4027;
  static constexpr int32_t kCommand = 0x8A00;
  static constexpr int kFunctionType = 21;
  static constexpr int kModulusChars = 256;  // 128 bytes written as hexadecimal digits
  enum Control : int { kExponentLabel = 4221, kExponentEdit = 4219, kModulusLabel = 4222, kModulusEdit = 4220,
                       kModulusHint = 4223 };
  enum Text : int { kTextModulusHint = 20588 };

  static plat::DialogTemplate Layout();
  CDlgRSA();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  bool ReadControls() override;

 private:
  std::string exponent_;
  std::string modulus_;
};
