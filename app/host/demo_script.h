// The script the main job runs: a text message to several vehicles through
// the device picker, a terminal attribute query, and a point query.
#pragma once

constexpr const char* kDemoScript = R"(# fleetcmd demo
funpage
device 1 12
# a text message to three vehicles, chosen in the device picker
text 4167 Please return to the depot by 18:00.
check 4170 on
pick 10001 10002 10005
click 1602
run
# the terminal attributes of the current vehicle
show 45
click 1600
run
get 4368
# a point query the host asks for
device 0 12
callname 10003
run
)";
