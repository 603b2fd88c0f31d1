#include "shell/window_sizes.h"

#include <algorithm>
#include <initializer_list>

namespace {
bool In(int type, std::initializer_list<int> types) { return std::find(types.begin(), types.end(), type) != types.end(); }

// Height of a window's page area; windows with a result list get room for it below.
constexpr int kResultListHeight = 210;

int BaseHeight(int type) {
  if (In(type, {0, 1, 2, 55})) return 570;
  if (In(type, {8, 10, 17, 34, 36, 37, 52, 53, 54, 56, 1017})) return 340;
  if (In(type, {12, 71})) return 460;
  if (type == 32) return 500;
  if (type == 35) return 170;
  if (type == 48) return 550;
  if (type == 50) return 200;
  if (In(type, {100, 101})) return 390;
  if (In(type, {103, 104})) return 530;
  return 480;
}

bool HasResultList(int type) { return !In(type, {32, 34, 35, 54, 71, 100, 101, 103, 104}); }
}  // namespace

int PreferredWindowHeight(int type) { return BaseHeight(type) + (HasResultList(type) ? kResultListHeight : 0); }

int PreferredWindowWidth(int type) {
  if (In(type, {36, 37, 52, 53, 56, 39, 40, 45, 47})) return 700;
  if (In(type, {34, 54, 71, 32, 35, 50})) return 450;
  if (In(type, {100, 101})) return 461;
  if (In(type, {103, 104})) return 692;
  return 815;
}
