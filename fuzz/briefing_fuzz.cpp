#include "editors/logic/briefing_letters.h"
#include "fuzz/support.h"
#include "mission/briefing_file.h"
#include "services/text.h"

/** Reads a briefing, writes it, and reads that again. */

namespace {

using namespace rws;

/** The text as it comes back. A break behind the short description and the briefing is added by
    each writing. */
Briefing Again(const Briefing& briefing) { return ParseBriefing(BriefingText(briefing)); }

/** Keys go wherever they stand, also where taking one away makes another. So do ends of lines that
    stand alone. */
bool IsPlain(std::string_view text) {
  for (const auto* key : {"Name ", "Short ", "Description ", "\\n"})
    if (Contains(text, key)) return false;
  return !Contains(Replace(text, "\r\n", ""), "\n") && !Contains(Replace(text, "\r\n", ""), "\r");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const CodePage& page = fuzz::QuietServices().Page;
  const std::string_view bytes = fuzz::TextOf(data, size);
  fuzz::RequireSame(SpellBriefing(page, bytes, BriefingLetters(page, bytes)), bytes,
                    "What was not touched keeps its spelling.");
  const Briefing briefing = ParseBriefing(bytes);
  const Briefing again = Again(briefing);
  // A backslash at an end would take the "n" of the break that is written behind it.
  const auto endsIt = [](const std::string& text) { return !text.ends_with('\\'); };
  if (IsPlain(briefing.Name) && !Contains(briefing.Name, "\r\n"))
    fuzz::RequireSame(again.Name, briefing.Name, "A name comes back.");
  if (IsPlain(briefing.Short) && endsIt(briefing.Short))
    fuzz::RequireSame(again.Short, briefing.Short + "\r\n", "A short description comes back.");
  if (IsPlain(briefing.Description) && endsIt(briefing.Description))
    fuzz::RequireSame(again.Description, briefing.Description + "\r\n", "A briefing comes back.");
  return 0;
}
