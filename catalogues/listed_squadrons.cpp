#include "catalogues/listed_squadrons.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "catalogues/listed_text.h"
#include "services/text.h"

namespace rws {

namespace {

/** What a regiment shares with those of its row. */
struct Group {
  std::string Country, Name;
};

std::string_view ColorOf(ListedArmy army) {
  if (army == ListedArmy::Red) return "red";
  return army == ListedArmy::Blue ? "blue" : "white";
}

class Regiments {
 public:
  Regiments(Catalogues& catalogues, const Services& services, const ListedNames& names)
      : catalogues_(catalogues), page_(services.Page), names_(names) {
    for (const auto& row : catalogues.Squadrons)
      for (const auto& regiment : row.Regiments)
        known_.try_emplace(std::string(Trim(regiment.Code)),
                           Known{{row.Country, row.Name}, regiment.UserData});
    for (const auto& country : names.Countries)
      countryNames_[country.Code] = ShownText(page_, country.Name);
    for (const auto& one : names.Regiments)
      if (const auto found = known_.find(one.Code); found != known_.end() && !one.Branch.empty())
        branches_.try_emplace(one.Branch, found->second.Of);
  }

  void Apply() {
    PrepareRows();
    Group last;
    for (const auto& listed : names_.Regiments) {
      const std::string code = ExactText(page_, listed.Code);
      // A flight's name has no blank, and a comma would end it in lists of the game.
      if (code.empty()) continue;
      const auto found = known_.find(code);
      if (found != known_.end()) last = found->second.Of;
      const Group group = found != known_.end() ? last : GroupOf(listed, last);
      std::string text = ShownText(page_, listed.Name);
      if (text.empty()) text = found == known_.end() ? code : found->second.Text;
      RowFor(group, ColorOf(listed.Army)).Regiments.push_back({code, std::move(text)});
    }
    std::erase_if(rows_, [](const Squadron& row) { return row.Regiments.empty(); });
    if (!rows_.empty()) catalogues_.Squadrons = std::move(rows_);
  }

 private:
  struct Known {
    Group Of;
    std::string Text;
  };

  /** The groups of the table first, in its order. */
  void PrepareRows() {
    for (const auto& row : catalogues_.Squadrons) RowFor({row.Country, row.Name}, row.Color);
  }

  Group GroupOf(const ListedRegiment& listed, const Group& last) const {
    if (listed.Branch.empty()) {
      if (!last.Name.empty()) return last;
      return listed.Army == ListedArmy::None ? Group{"none", "None"} : Group{"Other", "Other"};
    }
    if (const auto found = branches_.find(listed.Branch); found != branches_.end())
      return found->second;
    return {NameOf(listed.Country), NameOf(listed.Branch)};
  }

  std::string NameOf(const std::string& code) const {
    const auto found = countryNames_.find(code);
    return found == countryNames_.end() || found->second.empty() ? ShownText(page_, code)
                                                                 : found->second;
  }

  Squadron& RowFor(const Group& group, std::string_view color) {
    const auto [place, isNew] =
        places_.try_emplace({group.Country, group.Name, std::string(color)}, rows_.size());
    if (isNew) rows_.push_back({std::string(color), group.Country, group.Name, {}});
    return rows_[place->second];
  }

  Catalogues& catalogues_;
  const CodePage& page_;
  const ListedNames& names_;
  std::unordered_map<std::string, Known> known_;  // by code
  std::unordered_map<std::string, std::string> countryNames_;
  std::unordered_map<std::string, Group> branches_;  // that the table knows
  std::vector<Squadron> rows_;
  std::map<std::tuple<std::string, std::string, std::string>, std::size_t> places_;
};

}  // namespace

void ApplyListedSquadrons(Catalogues& catalogues, const Services& services,
                          const ListedNames& names) {
  Regiments(catalogues, services, names).Apply();
}

}  // namespace rws
