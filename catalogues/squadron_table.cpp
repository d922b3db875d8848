#include "catalogues/squadron_table.h"

#include "services/text.h"

namespace rws {

SquadronTable::SquadronTable(std::vector<Squadron> rows) : rows_(std::move(rows)) { MakeIndex(); }

std::span<const std::uint32_t> SquadronTable::Candidates(std::string_view code) const {
  return byCode_.Find(Trim(code));
}

void SquadronTable::MakeIndex() {
  std::vector<TextIndex::Entry> entries;
  for (std::uint32_t row = 0; row < rows_.size(); ++row)
    for (const auto& regiment : rows_[row].Regiments) entries.push_back({Trim(regiment.Code), row});
  byCode_ = TextIndex(entries);
}

}  // namespace rws
