#include "pages/control/no_param_pages.h"

#include "command/page_registry.h"

namespace {
const RegisterPage<CDlgLinkCheck> kLinkCheck{CDlgLinkCheck::kFunctionType};
const RegisterPage<CDlgReportingDriver> kReportingDriver{CDlgReportingDriver::kFunctionType};
}  // namespace
