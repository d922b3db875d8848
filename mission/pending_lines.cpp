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
  std::size_t digits = 0, dots = 0, others = 0;
  for (const char c : word.substr(word[0] == '-' ? 1 : 0))
    ++(c >= '0' && c <= '9' ? digits : c == '.' ? dots : others);
  std::string number(word);
  if (others > 0 || digits == 0 || dots > 1) return number;
  if (dots == 1) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
  }
  return number.empty() || number == "-" || number == "-0" ? "0" : number;
}

std::string Words(std::string_view line, bool keyed) {
  std::string words;
  for (std::size_t i = 0; i < line.size();) {
    std::size_t end = i;
    while (end < line.size() && line[end] != ' ' && line[end] != '\t') ++end;
    const auto word = line.substr(i, end - i);
    i = end + 1;
    if (word.empty()) continue;
    const bool isKey = words.empty() && keyed;
    words.append(isKey ? LowerKey(word) : PlainNumber(word)).append(1, ' ');
  }
  return words;
}

/** Lines of a text that stand under one header, or ahead of the first one. */
struct Part {
  std::size_t First = 0, Last = 0;
  bool IsKeyed = false;  // the order of its lines means nothing
};

/** The parts of a text by their names. */
std::map<std::string, std::vector<Part>> PartsOf(const KeptText& text) {
  std::map<std::string, std::vector<Part>> parts;
  const auto& sections = text.Sections();
  parts[""].push_back({0, sections.empty() ? text.Lines().size() : sections[0].Header});
  for (const auto& section : sections) {
    const bool isKeyed =
        EqualNoCase(section.Name, "MAIN") || text.LineOf(section, "Planes") != KeptText::npos;
    parts[LowerKey(section.Name)].push_back({section.First, section.Last, isKeyed});
  }
  return parts;
}

/** The bytes of a part. */
std::string_view BytesOf(const LineArray& lines, const Part& part) {
  if (part.First >= part.Last) return {};
  const std::size_t start = lines.Start(part.First);
  return std::string_view(lines.FileText()).substr(start, lines.End(part.Last - 1) - start);
}

/** Its lines, as far as they mean something. */
std::vector<std::string> MeaningOf(const LineArray& lines, const Part& part) {
  std::vector<std::string> kept;
  for (std::size_t i = part.First; i < part.Last; ++i)
    if (auto words = Words(lines[i], part.IsKeyed); !words.empty())
      kept.push_back(std::move(words));
  if (part.IsKeyed) std::sort(kept.begin(), kept.end());
  return kept;
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
  if (a.SharesWith(b)) return true;
  const auto inA = PartsOf(KeptText(a)), inB = PartsOf(KeptText(b));
  const auto isSame = [&](const Part& one, const Part& other) {
    return BytesOf(a, one) == BytesOf(b, other) || MeaningOf(a, one) == MeaningOf(b, other);
  };
  return std::equal(inA.begin(), inA.end(), inB.begin(), inB.end(),
                    [&](const auto& one, const auto& other) {
                      return one.first == other.first &&
                             std::equal(one.second.begin(), one.second.end(), other.second.begin(),
                                        other.second.end(), isSame);
                    });
}

MadeAnewCheck CheckMadeAnew(const Document& doc, const Services& services, const Mission& mission,
                            const ShownValues& shown) {
  const Services silent = Silent(services);
  Mission unedited;
  unedited.DirPath = mission.DirPath;
  unedited.FileName = mission.FileName;
  unedited.BaseName = mission.BaseName;
  unedited.AsRead = mission.AsRead;
  const Mission fresh = FreshlyRead(doc, silent, unedited);
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
