#include "command_table.h"

#include <algorithm>

namespace commands {
namespace {

enum SectionIndex { kWorld, kNetwork, kWindows, kPage, kResults, kObserve, kTime };

constexpr Section kSections[] = {
    {"The world", ""},
    {"The simulated network",
     "`DEVIDNO` is a device number of the fleet (`10001`); a number the fleet lacks is an error."},
    {"Windows", ""},
    {"The current page",
     "`ID` is a control id. It names the current page's control first (in the function page window, the "
     "page shown in the page area), then the window's own; `win:ID` names the window's own control "
     "(for example `get win:4400`, the result list's frame, where a page has an edit 4400 of its own). "
     "Of several controls with one id the shown one wins."},
    {"The result list", ""},
    {"Observing", "Each of these switches a kind of output line on or off (all are off at the start)."},
    {"Time and the session", ""},
};

constexpr Info kAll[] = {
    {kWorld, "lang", "lang FILE", "switches the plug-in's language file and the host's own texts; a file that cannot be read is an error and the old language stays"},
    {kWorld, "fleet", "fleet FILE", "loads a fleet (JSON, see fleet.md) in place of the built-in one; a JSON error names its line and column"},
    {kWorld, "config", "config ID VALUE", "sets a host configuration switch (for example `config 446 0`)"},
    {kWorld, "config-text", "config-text ID INDEX TEXT", "sets a configuration text (preset texts are `config-text 718 0 ...`)"},
    {kWorld, "restart", "restart", "closes every window, unloads the plug-in and loads it again; the host's store (configuration, remembered inputs) stays on disk"},

    {kNetwork, "net", "net delay MS [DEVIDNO]", "terminals (or one terminal) answer after MS of virtual time"},
    {kNetwork, "net", "net offline DEVIDNO", "the network reports the device offline (status 101)"},
    {kNetwork, "net", "net online DEVIDNO", "the device answers normally again"},
    {kNetwork, "net", "net status DEVIDNO CODE [TEXT]", "the network reports this status for the device (101 offline, 110 timed out), with TEXT as the reply text when given"},
    {kNetwork, "net", "net reply DEVIDNO JSON", "the device answers with this reply text, e.g. `{\"Error\":0,\"result\":3}`"},
    {kNetwork, "net", "net raw DEVIDNO TEXT", "the device answers with any text at all (malformed replies; escapes allowed)"},
    {kNetwork, "net", "net fail-open DEVIDNO on|off", "opening a channel for the device fails"},
    {kNetwork, "net", "net fail-start DEVIDNO on|off", "starting a channel for the device fails"},
    {kNetwork, "net", "net duplicate DEVIDNO on|off", "each answer of the device reaches the channel's callback twice in a row (the page takes the first); a late answer is `net delay`"},
    {kNetwork, "net", "net session TEXT", "the session text the network library gives out (it travels in every request envelope)"},

    {kWindows, "funpage", "funpage", "creates (or shows again) the function page window; it becomes current"},
    {kWindows, "device", "device DEVID TYPE", "makes a device current and selects a function (`DLL_808FunPageParam`); device 0 is none"},
    {kWindows, "window", "window TYPE", "opens a vehicle function window for a function type; it becomes current"},
    {kWindows, "destroy", "destroy", "destroys the current window (`Dll_DestroyWindow` or `Dll_Destroy808FunWindow`), sends under way included; prints `DESTROYED <export> <result>`"},
    {kWindows, "size", "size [TYPE]", "prints the window sizes the plug-in asks for: `SIZE funpage W H` (`Dll_Get808FunWindowSize`), and with TYPE `SIZE TYPE W H` (`Dll_GetWindowWidth`/`Height`)"},
    {kWindows, "msg", "msg MSG W L", "sends a host message to the current vehicle function window (`DLL_WindowMsg`) with number arguments"},
    {kWindows, "msg", "msg context COUNT TEXT", "message 1: the page's context words become the address of TEXT (kept by the host, GBK) and COUNT"},
    {kWindows, "msg", "msg alarm-text TEXT", "message 4: w is the address of TEXT (UTF-16), the alarm-handling text"},
    {kWindows, "msg", "msg alarms [INDEX ...]", "message 1 as the client hands a window its alarms: w is the address of the chosen alarm records of the fleet (748 bytes each, kept by the host; INDEX from 0 in the fleet's `alarms`, all of them without one) and l their count"},
    {kWindows, "callname", "callname DEVIDNO", "queues a point query (`DLL808_CallName`)"},
    {kWindows, "tree", "tree", "prints the function tree, one `TREE` line an item: indent, name, `[type]`, `*` when selected"},
    {kWindows, "tree", "tree click N", "clicks the Nth item of the tree as `tree` lists them (from 1), a group included"},
    {kWindows, "show", "show TYPE", "picks a function in the tree, as a click would"},

    {kPage, "text", "text ID TEXT", "types TEXT into an edit (the edit's limits and filters apply)"},
    {kPage, "check", "check ID on|off", "ticks or clears a check box, or checks a radio button"},
    {kPage, "choose", "choose ID INDEX", "picks an entry of a combo box, or a row of a list"},
    {kPage, "date", "date ID YYYY-MM-DD", "sets a date picker"},
    {kPage, "time", "time ID hh:mm:ss", "sets a time picker"},
    {kPage, "click", "click ID", "clicks a button"},
    {kPage, "pick", "pick DEVIDNO ...", "the device picker's answer for its next run; `pick none` cancels it (at the prompt, without an answer the picker asks)"},
    {kPage, "modal", "modal COMMAND ...", "a command for the next modal dialog (editors, pickers); several lines build one batch, `modal next` starts the batch for the dialog after"},
    {kPage, "controls", "controls", "prints every control: `CONTROL id kind \"caption\" value=... enabled|disabled shown|hidden rect=l,t,r,b` (the rectangle in the window's coordinates)"},
    {kPage, "get", "get ID", "prints a control's value: `VALUE id value` (a line each for a text of several lines)"},

    {kResults, "list", "list menu", "opens the result list's context menu and dismisses it: a `MENU` line an entry"},
    {kResults, "list", "list clear", "clears the result list through its context menu"},
    {kResults, "list", "list open ROW", "double-clicks a row of the result list (0 is the top row)"},
    {kResults, "export", "export FILE", "saves the result list as a spreadsheet (.xlsx) through its context menu and the save dialog: one worksheet per 50,000 rows, named after the result list's title; a failed write is an error"},

    {kObserve, "envelope", "envelope on|off", "an `ENVELOPE <DevIDNO> <envelope>` line after each `SEND`"},
    {kObserve, "answers", "answers on|off", "an `ANSWER <DevIDNO> <status> <reply>` line each time a reply reaches a channel's callback"},
    {kObserve, "log", "log on|off", "a `LOG <level> <module>: <text>` line for each line the plug-in or the host logs"},
    {kObserve, "picker", "picker on|off", "a `PICKER` line with the parameter record each time the device picker runs"},

    {kTime, "run", "run", "runs the virtual clock until every send is over and no answer is pending"},
    {kTime, "advance", "advance MS", "runs the virtual clock for MS milliseconds"},
    {kTime, "help", "help [COMMAND]", "lists the commands, or says what one does"},
    {kTime, "quit", "quit", "ends the script or the prompt (`exit` and Ctrl-D too)"},
    {kTime, "exit", "exit", "the same as `quit`"},
};

}  // namespace

std::span<const Section> Sections() { return kSections; }
std::span<const Info> All() { return kAll; }

std::span<const Info> Find(std::string_view name) {
  const Info* first = std::find_if(std::begin(kAll), std::end(kAll), [&](const Info& i) { return i.name == name; });
  const Info* last = std::find_if(first, std::end(kAll), [&](const Info& i) { return i.name != name; });
  return {first, last};
}

std::string HelpText() {
  std::string text;
  for (size_t s = 0; s < std::size(kSections); ++s) {
    text += std::string(kSections[s].title) + ":\n";
    for (const Info& info : kAll) {
      if (info.section == static_cast<int>(s)) text += "  " + std::string(info.usage) + "\n";
    }
  }
  text += "help COMMAND says more about one; docs/scripting.md describes the output lines.\n";
  return text;
}

std::string HelpText(std::string_view name) {
  std::string text;
  for (const Info& info : Find(name)) text += std::string(info.usage) + "\n    " + info.summary + "\n";
  return text;
}

// A bar inside a Markdown table cell must be escaped.
static std::string EscapeBars(std::string text) {
  for (size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) text.replace(at, 1, "\\|");
  return text;
}

std::string Markdown() {
  std::string text;
  for (size_t s = 0; s < std::size(kSections); ++s) {
    text += "### " + std::string(kSections[s].title) + "\n\n";
    if (*kSections[s].intro) text += std::string(kSections[s].intro) + "\n\n";
    text += "| command | what it does |\n|---|---|\n";
    for (const Info& info : kAll) {
      if (info.section != static_cast<int>(s)) continue;
      text += "| `" + EscapeBars(info.usage) + "` | " + EscapeBars(info.summary) + " |\n";
    }
    text += "\n";
  }
  return text;
}

}  // namespace commands
