// Position queries: the vehicle moves a little between queries.
#include <json/value.h>

#include "host/ref/run/terminals.h"

namespace hostref::terminals {
namespace {
constexpr int kPositionQuery = 0x8201;
// Where the simulated vehicles stand, degrees x 10^6, and how far a query moves them.
constexpr int kBaseLatitude = 22543000, kBaseLongitude = 114057000, kStepLatitude = 120, kStepLongitude = 90;

Json::Value Position(size_t query) {
  const int step = static_cast<int>(query);
  Json::Value reply;
  reply["Lat"] = kBaseLatitude + step * kStepLatitude;
  reply["Lng"] = kBaseLongitude + step * kStepLongitude;
  reply["Speed"] = 350 + step % 7 * 10;
  reply["Direction"] = (step * 15) % 360;
  reply["Alarm"] = 0;
  reply["Status"] = 3;
  return reply;
}

const RegisterResponder kPosition{kPositionQuery, [](const TerminalRequest& r) -> Answer { return Reply(Position(r.count)); }};
}  // namespace
}  // namespace hostref::terminals
