// What the simulated terminals keep of events, questions, the information
// menu and service, call-backs and the phone book, for tests to read back.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace hostref::terminals {

struct Contact {
  int flag = 0;       // call directions, bit 7 a VoIP number
  std::string phone;  // UTF-8
  std::string name;   // UTF-8, as the operator typed it
};
struct PlacedCall {
  int flag = 0;  // 0 normal call, 1 listening, bit 7 a VoIP number
  std::string phone;
};
struct ReceivedInfo {
  int type = 0;
  std::string text;
};
struct AskedQuestion {
  int flag = 0;
  std::string question;
  std::map<int, std::string> answers;  // by answer id
  int answered = -1;                   // the id the driver chose, -1 when none
};

// Event texts and information menu texts, by identifier.
std::map<int, std::string> EventList(const std::string& devIdno);
std::map<int, std::string> InfoMenu(const std::string& devIdno);
std::vector<Contact> PhoneBook(const std::string& devIdno);
std::vector<PlacedCall> Calls(const std::string& devIdno);
std::vector<ReceivedInfo> InfoReceived(const std::string& devIdno);
std::vector<AskedQuestion> Questions(const std::string& devIdno);

}  // namespace hostref::terminals
