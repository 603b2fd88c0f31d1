// The built-in fleet: twelve vehicles whose devices between them show every
// device kind and optional function the plug-in distinguishes (protocol
// editions, attribute-76 families, taxi terminals, optional groups).
#include "host/ref/hostref.h"

namespace {

// Devices, by what they show:
//  1 plain 2013 terminal             2 2019 edition (80)
//  3 attr 76 with 78                 4 attr 76 with 99          5 attr 76 alone
//  6 taxi (81)                       7 taxi with 117
//  8 10=23, 15 set, 69, 71, 85       9 75=21, 15 set, 122
// 10 75=15, 112=1, 2019 edition     11 15 set with 18 set, 117  12 2019 edition, 71, 85
constexpr const char* kDefaultFleet = R"({
  "session": "ref-session-0001",
  "rights": "all",
  "versions": [],
  "testIP": false,
  "dirSvrIP": "127.0.0.1",
  "ver7_21": false,
  "config": {"170": 1, "446": 1, "1100": 1, "1103": 1},
  "configText": {},
  "vehicles": [
    {"name": "粤B10001", "devices": [{"id": 1, "idno": "10001"}]},
    {"name": "粤B10002", "devices": [{"id": 2, "idno": "10002", "attrs": {"80": 1}}]},
    {"name": "京A10003", "devices": [{"id": 3, "idno": "10003", "attrs": {"76": 1, "78": 1}}]},
    {"name": "京A10004", "devices": [{"id": 4, "idno": "10004", "attrs": {"76": 1, "99": 1}}]},
    {"name": "沪C10005", "devices": [{"id": 5, "idno": "10005", "attrs": {"76": 1}}]},
    {"name": "粤B10006", "devices": [{"id": 6, "idno": "10006", "attrs": {"81": 1}}]},
    {"name": "粤B10007", "devices": [{"id": 7, "idno": "10007", "attrs": {"81": 1, "117": 1}}]},
    {"name": "苏E10008", "devices": [{"id": 8, "idno": "10008",
      "attrs": {"10": 23, "15": 1, "18": 0, "69": 1, "71": 1, "85": 1}}]},
    {"name": "浙A10009", "devices": [{"id": 9, "idno": "10009", "attrs": {"75": 21, "15": 1, "122": 1}}]},
    {"name": "鲁B10010", "devices": [{"id": 10, "idno": "10010", "attrs": {"75": 15, "112": 1, "80": 1}}]},
    {"name": "川A10011", "devices": [{"id": 11, "idno": "10011", "attrs": {"15": 1, "18": 1, "117": 1}}]},
    {"name": "闽D10012", "devices": [{"id": 12, "idno": "10012", "attrs": {"80": 1, "71": 1, "85": 1}}]}
  ],
  "markers": [
    {"id": 1, "name": "南山停车场", "shape": "circle", "lng": 113930000, "lat": 22533000, "radius": 500},
    {"id": 2, "name": "福田站", "shape": "circle", "lng": 114055000, "lat": 22534000, "radius": 200},
    {"id": 3, "name": "前海片区", "shape": "rectangle", "points": [[113880000, 22550000], [113920000, 22510000]]},
    {"id": 4, "name": "机场货运区", "shape": "polygon",
     "points": [[113800000, 22640000], [113830000, 22650000], [113845000, 22620000], [113810000, 22610000]]},
    {"id": 5, "name": "Depot", "shape": "point", "lng": 114020000, "lat": 22560000},
    {"id": 6, "name": "Harbour yard", "shape": "circle", "lng": 151200000, "lat": -33500000, "radius": 70000,
     "fence": 2, "map": 1},
    {"id": 7, "name": "蛇口码头", "shape": "circle", "lng": 113915000, "lat": 22482000, "radius": 300, "fence": 3},
    {"id": 8, "name": "Southern block", "shape": "rectangle", "points": [[20000000, -10000000], [22000000, -12000000]],
     "fence": 4, "map": 2},
    {"id": 9, "name": "宝安仓库", "shape": "rectangle", "points": [[113830000, 22580000], [113860000, 22560000]],
     "fence": 5},
    {"id": 10, "name": "盐田港区", "shape": "polygon", "outOfLine": true, "fence": 2,
     "points": [[114230000, 22580000], [114280000, 22590000], [114290000, 22560000], [114240000, 22550000],
                [114225000, 22565000]]},
    {"id": 11, "name": "West quay", "shape": "polygon", "fence": 5, "map": 1,
     "points": [[-9150000, 38700000], [-9140000, 38705000], [-9135000, 38695000]]}
  ],
  "lines": [
    {"id": 101, "name": "深南大道", "width": 50,
     "points": [[113930000, 22540000], [113990000, 22541000], [114055000, 22543000]]},
    {"id": 102, "name": "Airport run", "width": 30, "map": 1,
     "points": [[114020000, 22560000], [113820000, 22630000]]},
    {"id": 103, "name": "Coast road", "width": 300,
     "points": [[114100000, 22500000], [114110000, 22501000], [114120000, 22502000], [114130000, 22503000],
                [114140000, 22504000], [114150000, 22505000], [114160000, 22506000], [114170000, 22507000],
                [114180000, 22508000], [114190000, 22509000], [114200000, 22510000], [114210000, 22511000],
                [114220000, 22512000], [114230000, 22513000], [114240000, 22514000], [114250000, 22515000],
                [114260000, 22516000], [114270000, 22517000], [114280000, 22518000], [114290000, 22519000]]}
  ],
  "alarms": [
    {"devIdno": "10001", "guid": "A-10001-0001", "msgId": 101, "time": 1768469400, "type": 1,
     "text": "SBAC=JT809-0001,urgent alarm"},
    {"devIdno": "10001", "guid": "A-10001-0002", "msgId": 102, "time": 1768469460, "type": 2,
     "time2": 1768469470, "type2": 13},
    {"devIdno": "10002", "guid": "A-10002-0001", "msgId": 103, "time": 1768469520, "type": 1,
     "info": 4865, "text": "supervision|10002;7;urgent"}
  ]
})";

}  // namespace

namespace hostref {
void LoadDefaultFleet() { LoadFleet(kDefaultFleet); }
}  // namespace hostref
