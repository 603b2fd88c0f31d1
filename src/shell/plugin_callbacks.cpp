#include "shell/plugin_callbacks.h"

ShowNotifyCallbackSlot& ShowNotifyCallback() {
  static ShowNotifyCallbackSlot slot;
  return slot;
}

PointQueryCallback& PointQueryResultCallback() {
  static PointQueryCallback slot;
  return slot;
}
