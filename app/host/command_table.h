// The one table of the script language's commands: name, usage and what each
// does, by section. `help`, the prompt's completion and the command tables of
// docs/scripting.md (fleetcmd-host --commands-markdown) all come from it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace commands {

struct Section {
  const char* title;
  const char* intro;  // a paragraph before the table, or ""
};

struct Info {
  int section;  // index into Sections()
  const char* name;
  const char* usage;    // the whole line, with its arguments
  const char* summary;  // what it does (Markdown: `code` marks names)
};

std::span<const Section> Sections();
std::span<const Info> All();
// The entries of a command (several when it has forms, e.g. `net`); empty when unknown.
std::span<const Info> Find(std::string_view name);

// `help`: every command's usage; `help NAME`: its entries with their summaries.
std::string HelpText();
std::string HelpText(std::string_view name);
// The sections as Markdown tables, as docs/scripting.md carries them.
std::string Markdown();

}  // namespace commands
