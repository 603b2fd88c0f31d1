// Simulated terminals: each device of the fleet answers the commands the
// plug-in sends the way a JT/T 808 terminal would, and remembers what it got.
// Answers are deterministic: the same requests give the same replies.
#pragma once

#include <string>
#include <vector>

namespace hostref::terminals {

struct ReceivedText {
  int flag = 0;
  int textType = 0;
  std::string text;  // UTF-8, as the operator typed it
};

// Makes the simulated platform answer through the terminals.
void Install();
void Uninstall();
void Clear();

std::vector<ReceivedText> Texts(const std::string& devIdno);
size_t QueryCount(const std::string& devIdno, int command);

// Undoes the form encoding of a text parameter ("+" and "%XX").
std::string FormDecode(const std::string& text);

}  // namespace hostref::terminals
