#include "mission/pending_lines.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "mission/carry_edits.h"
#include "mission/kept_merge.h"
#include "mission/kept_text.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** A number without what its format adds: "1500.00" is "1500". */
std::string PlainNumber(std::string_view word) {
  std::string number(word);
  const std::string_view digits = word.substr(word[0] == '-' ? 1 : 0);
  const bool isNumber = digits.find_first_not_of(".0123456789") == digits.npos &&
                        digits.find_first_of("0123456789") != digits.npos &&
                        digits.find('.') == digits.rfind('.');
  if (!isNumber) return number;
  if (Contains(digits, ".")) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
  }
  return number.empty() || number == "-" || number == "-0" ? "0" : number;
}

std::string Words(std::string_view line, bool keyed) {
  std::string words;
  for (std::size_t i = 0; i < line.size();) {
    const std::size_t end = std::min(line.find_first_of(" \t", i), line.size());
    const auto word = line.substr(i, end - i);
    i = end + 1;
    if (word.empty()) continue;
    const bool isKey = words.empty() && keyed;
    words.append(isKey ? LowerKey(word) : PlainNumber(word)).append(1, ' ');
  }
  return words;
}

/** The lines of all sections of a name, as far as they mean something. */
using Meaning = std::map<std::string, std::vector<std::vector<std::string>>>;

Meaning MeaningOf(const LineArray& lines) {
  const KeptText text(lines);
  Meaning meaning;
  const auto add = [&](std::string_view name, std::size_t first, std::size_t last, bool keyed) {
    std::vector<std::string> kept;
    for (std::size_t i = first; i < last; ++i)
      if (auto words = Words(lines[i], keyed); !words.empty()) kept.push_back(std::move(words));
    if (keyed) std::sort(kept.begin(), kept.end());
    meaning[LowerKey(name)].push_back(std::move(kept));
  };
  const std::size_t begin = text.Sections().empty() ? lines.size() : text.Sections()[0].Header;
  add("", 0, begin, false);
  for (const auto& section : text.Sections()) {
    const bool isFlight = text.LineOf(section, "Planes") != KeptText::npos;
    add(section.Name, section.First, section.Last, isFlight || EqualNoCase(section.Name, "MAIN"));
  }
  return meaning;
}

LineArray MadeAnew(const Document& doc, const Services& services, const Mission& mission,
                   const ShownValues& shown, std::string& fault) {
  Document one = DocumentOf(doc, mission);
  LineArray lines;
  if (!BuildMissionFile(one, services, lines, 0, shown, &fault) && fault.empty())
    fault = "The mission has no section behind which its flights could stand.";
  return lines;
}

}  // namespace

PendingLines LookAhead(const Document& doc, const Services& services, const Mission& mission,
                       const ShownValues& shown, const Mission& saved, PendingPart part) {
  const Services silent = Silent(services);
  PendingLines pending;
  pending.File = mission.AsRead;
  const auto build = [&](std::string& fault, const auto& body) {
    Trap(body, [&](const Fault& caught) { fault = caught.Text; });
  };
  if (part != PendingPart::Anew)
    build(pending.KeptFault, [&] {
      const Mission kept = ReadAs(doc, silent, mission, true, saved);
      pending.File = kept.AsRead;
      BuildKeptFile(doc, silent, kept, pending.Kept, &pending.KeptFault);
    });
  if (part != PendingPart::Kept)
    build(pending.AnewFault, [&] {
      const Mission anew = ReadAs(doc, silent, mission, false, saved);
      pending.Anew = MadeAnew(doc, silent, anew, shown, pending.AnewFault);
    });
  return pending;
}

std::size_t ChangedLines(const LineArray& file, const LineArray& written) {
  if (file.SharesWith(written)) return 0;
  const DiffCounts counts = CountDifferences(file.FileText(), written.FileText());
  return counts.Added + counts.Gone + counts.Changed;
}

bool SameMeaning(const LineArray& a, const LineArray& b) {
  return a.SharesWith(b) || MeaningOf(a) == MeaningOf(b);
}

MadeAnewCheck CheckMadeAnew(const Document& doc, const Services& services, const Mission& mission,
                            const ShownValues& shown) {
  const Services silent = Silent(services);
  Mission unedited = mission;
  unedited.Lines = unedited.AsRead;
  Mission fresh = FreshlyRead(doc, silent, unedited);
  fresh = ReadAs(doc, silent, fresh, false, fresh);
  std::string fault;
  const LineArray lines = MadeAnew(doc, silent, fresh, shown, fault);
  return {fault.empty() && SameMeaning(fresh.AsRead, lines), ChangedLines(fresh.AsRead, lines)};
}

std::string PendingText(std::size_t edited, std::size_t rewritten) {
  const auto count = [](std::size_t lines) {
    return GroupedNumber(lines) + (lines == 1 ? " line" : " lines");
  };
  if (edited + rewritten == 0) return "No line changes";
  if (rewritten == 0) return count(edited) + " changed";
  if (edited == 0) return count(rewritten) + " rewritten";
  return count(edited) + " changed, " + GroupedNumber(rewritten) + " more rewritten";
}

}  // namespace rws
