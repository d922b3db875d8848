#include "library/completion.h"

#include <algorithm>

#include "library/query.h"
#include "services/arrays.h"
#include "services/text.h"

namespace rws {

namespace {

/** The part that the cursor stands in or behind; an empty one where it stands alone. */
QueryPart PartAt(std::string_view line, std::size_t cursor) {
  for (const auto& part : SplitQuery(line))
    if (part.At <= cursor && cursor <= part.At + part.Length) return part;
  QueryPart none;
  none.At = none.KeyAt = none.ValueAt = cursor;
  return none;
}

const NamedValues* ValuesOf(QueryKey key, const MissionIndex& index) {
  if (key == QueryKey::Map) return &index.Maps;
  if (key == QueryKey::Aircraft || key == QueryKey::Player) return &index.Aircraft;
  if (key == QueryKey::Squadron) return &index.Squadrons;
  return nullptr;
}

/** The names that hold a value, sorted; "" is held by all. */
std::vector<std::string> NamesWith(const NamedValues& values, const std::string& typed,
                                   const CodePage& page) {
  std::vector<std::string> names;
  const auto bytes = page.FromUtf8(typed);
  if (!bytes) return names;
  const std::string wanted = ComparedText(page, *bytes);
  for (std::uint32_t i = 1; i < values.size(); ++i)
    if (Contains(values[i].Compared, wanted)) names.push_back(page.ToUtf8(values[i].Shown));
  const auto itself = [](const std::string& name) -> const std::string& { return name; };
  SortByKey(names, FoldName, itself);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace

std::vector<Completion> Complete(std::string_view line, std::size_t cursor,
                                 const MissionIndex& index, std::size_t most) {
  std::vector<Completion> found;
  const QueryPart part = PartAt(line, cursor);
  const std::size_t end = part.At + part.Length;
  const auto add = [&](std::string text, std::string_view explains, std::size_t at) {
    if (found.size() < most)
      found.push_back({std::move(text), std::string(explains), at, end - at});
  };
  const std::string typed = FoldName(part.Value);
  if (!part.HasKey) {
    for (const auto key : QueryKeys())
      if (key.starts_with(typed)) add(std::string(key) + ":", KeyHint(*KeyNamed(key)), part.KeyAt);
    return found;
  }
  const auto key = KeyNamed(part.Key);
  if (!key) return found;
  for (const auto value : FixedValues(*key))
    if (ContainsNoCase(value, typed)) add(FoldName(value), "", part.ValueAt);
  if (const auto* values = ValuesOf(*key, index))
    for (const auto& name : NamesWith(*values, part.Value, index.Page()))
      add(QuotedValue(name), "", part.ValueAt);
  return found;
}

}  // namespace rws
