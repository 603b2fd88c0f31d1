// Preferred size of a vehicle function window by function type, in pixels.
#pragma once

int PreferredWindowHeight(int functionType);
int PreferredWindowWidth(int functionType);
