// The terminal attribute query: terminal type, maker, model, terminal id, SIM
// card ICCID, hardware and firmware versions, GNSS and communication modules,
// one block of text per answering device. A new query empties the text box.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "pages/settings/attr_query_page.h"

class CDlgQueryDeviceAttr : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4056;
  static constexpr int32_t kCommand = 0x8107;
  static constexpr int kFunctionType = 45;
  enum Text : int {
    kLabelType = 13601, kLabelMaker = 13602, kLabelModel = 13603, kLabelTerminalId = 13604, kLabelIccid = 13605,
    kLabelHardware = 13606, kLabelFirmware = 13607, kLabelGnss = 13608, kLabelComm = 13609,
    kYes = 13611, kNo = 13612, kSupported = 13613, kUnsupported = 13614, kAllInOne = 13620, kSplit = 13621,
    kBitPassenger = 13615, kBitDangerousGoods = 13616, kBitFreight = 13617, kBitTaxi = 13618, kBitDiskVideo = 13619,
    kBitTrailer = 13634,
    kBitGps = 13622, kBitBeidou = 13623, kBitGlonass = 13624, kBitGalileo = 13625,
    kBitGprs = 13626, kBitCdma = 13627, kBitTdScdma = 13628, kBitWcdma = 13629, kBitCdma2000 = 13630,
    kBitTdLte = 13631, kBitOther = 13633,
  };
  // Bit lists already written in this query, by reply member and value; at
  // most kMaxKeptBitLists are kept, so replies of ever new values cost no more.
  using BitLists = std::map<std::pair<const char*, int>, std::string>;
  static constexpr size_t kMaxKeptBitLists = 64;

  static plat::DialogTemplate Layout() { return MakeTemplate(kTemplate); }
  CDlgQueryDeviceAttr() : CAttrQueryPage(kTemplate, kCommand) {}

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
  void BeforeQuery() override {
    SetItemText(kResultText, "");
    bitLists_.clear();
  }

 private:
  BitLists bitLists_;
};
