// The provincial pages that ride on the terminal's transparent data (0x8900):
// every parameter object holds "SCRAPYARD" 1 and the sub-type "SCTYPE" that
// tells the terminal what the data is, and the data itself, mostly as one
// comma-separated note "SCNOTE". Two pages carry a text; two keep records on
// the terminal (add, delete, clear) and can ask for stored records by id.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/description.h"

class CTransparentDataPage : public CBaseDlg {
 public:
  static constexpr int32_t kCommand = 0x8900;

 protected:
  using CBaseDlg::CBaseDlg;
  // "SCRAPYARD" 1 and "SCTYPE".
  static Json::Value Param(int subType);
  // "SCNOTE", encoded, only when the note is not empty.
  static void PutNote(Json::Value& param, const std::string& note);
};

// A page with one text for the terminal (roof light, external screen).
class CTransparentTextPage : public CTransparentDataPage {
 public:
  static constexpr int kMaxChars = 512;
  enum Control : int { kLabel = 4359, kText = 4360 };
  void EnableParamControls(BOOL enable) override { EnableItem(kText, enable != FALSE); }
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  CTransparentTextPage(int templateId, int subType, int label);
  // The page's template: the label and the text, then the buttons.
  static plat::DialogTemplate TextLayout(int templateId, const char* caption, int label);

 private:
  const int subType_;
  const int label_;
  std::string text_;
};

// A page that keeps records on the terminal and asks for them by id.
class CTransparentRecordPage : public CTransparentDataPage {
 public:
  enum Control : int {
    kSetGroup = 4381, kIdLabel = 4382, kId = 4360, kOperationLabel = 4383, kAdd = 4374, kDelete = 4375,
    kClear = 4376, kQueryGroup = 4384, kQueryIdLabel = 4385, kQueryIds = 4361, kQueryHint = 4386,
  };
  enum Text : int {
    kTextId = 13813, kTextOperation = 13814, kTextAdd = 13815, kTextDelete = 13816, kTextClear = 13817,
    kTextQueryHint = 13822, kTextQuery = 13823,
  };
  enum Operation : int { kOpAdd = 1, kOpDelete = 2, kOpClear = 3 };
  static constexpr int kAllRecords = -1;  // "SCID" of a query without ids

  void EnableParamControls(BOOL enable) override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  // The query ids typed: decimal numbers separated by ";", empty pieces skipped.
  static std::vector<int> QueryIds(const std::string& text);

 protected:
  CTransparentRecordPage(int templateId, int setType, int queryType);
  // Reads the record's own controls, commas taken out of its texts.
  virtual void ReadRecord() = 0;
  virtual std::string RecordNote() const = 0;
  virtual void DescribeRecord(Description& description) const = 0;
  // The record's own input controls.
  virtual std::vector<int> RecordControls() const = 0;
  // A text of the record with its commas taken out, so the note keeps its field count.
  std::string FieldText(int control) const;
  int Operation() const { return operation_; }

 private:
  void OnQuery();
  void OnSet();
  const int setType_, queryType_;
  std::string idText_;
  std::string queryText_;
  int operation_ = kOpAdd;
};
