#include "catalogues/own_entries.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "catalogues/listed_aircraft.h"
#include "catalogues/listed_text.h"
#include "catalogues/weapons.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr const char kFile[] = "RWS_Own.txt";
constexpr std::uint64_t kMostBytes = 16 * 1024 * 1024;
/** Of a line that is not understood, and how many of them are logged: the file may be anything. */
constexpr std::size_t kMostOfALine = 200, kMostLogged = 20;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF", kAircraft = "[aircraft ", kMap = "[map ";
constexpr const char kHead[] =
    "# Aircraft and maps that were added by hand; they win over the tables and the game's "
    "lists.\r\n";

/** A line without its end; `rest` begins behind it. */
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  while (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/** The class or path of the line that begins an entry of a kind; "" for any other line. */
std::string_view NameOfHead(std::string_view line, std::string_view kind) {
  line = Trim(line);
  if (!line.starts_with(kind) || !line.ends_with(']')) return "";
  return Trim(line.substr(kind.size(), line.size() - kind.size() - 1));
}

/** An entry in the place of the one with the same name, or behind the others. */
template <class Entry>
Entry* Put(std::vector<Entry>& entries, std::string Entry::*name, std::string_view value) {
  std::erase_if(entries, [&](const Entry& one) { return one.*name == value; });
  auto& entry = entries.emplace_back();
  entry.*name = value;
  return &entry;
}

bool SetAircraft(OwnAircraft& entry, std::string_view key, std::string_view value) {
  if (key == "name")
    entry.Name = value;
  else if (key == "side" && (value == "red" || value == "blue"))
    entry.IsBlue = value == "blue";
  else if (key == "flyable" && (value == "yes" || value == "no"))
    entry.Flyable = value == "yes";
  else if (key == "key")
    entry.Key = value;
  else if (key == "loadout" && !value.empty())
    entry.Loadouts.emplace_back(value);
  else if (key == "from")
    entry.From = value;
  else
    return false;
  return true;
}

bool SetMap(OwnMap& entry, std::string_view key, std::string_view value) {
  if (key == "name")
    entry.Name = value;
  else if (key == "from")
    entry.From = value;
  else
    return false;
  return true;
}

/** Without what would break the line. */
std::string OneLine(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  return std::string(Trim(text));
}

/** Puts the value of a line into an entry by one of the above; false for a line that is not of its
    kind. */
template <class Entry>
bool SetLine(Entry& entry, std::string_view line,
             bool (*set)(Entry&, std::string_view, std::string_view)) {
  const std::size_t equals = line.find('=');
  return equals != line.npos &&
         set(entry, Trim(line.substr(0, equals)), Trim(line.substr(equals + 1)));
}

/** A line that only an entry of this kind holds, and that goes with it. */
bool IsValueLine(std::string_view line, std::string_view kind) {
  OwnAircraft aircraft;
  OwnMap map;
  return kind == kAircraft ? SetLine(aircraft, line, SetAircraft) : SetLine(map, line, SetMap);
}

/** A line that is the same wherever it stands. */
bool IsNote(std::string_view line) {
  line = Trim(line);
  return line.empty() || line.starts_with('#');
}

/** The bytes without the entries of a name, and with `entry` at their end. What stands between the
    lines of these, such as a note of the user's, stays; what their kind does not know goes along,
    as the entry ahead might know it. */
std::string WithEntry(std::string_view bytes, std::string_view kind, std::string_view name,
                      const std::string& entry) {
  std::string result, unknown;
  if (bytes.empty()) result = kHead;
  bool isOld = false;
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::string_view before = rest, line = TakeLine(rest);
    const bool isHead = Trim(line).starts_with('[');
    if (isHead) isOld = NameOfHead(line, kind) == name;
    const std::string_view whole = before.substr(0, before.size() - rest.size());
    if (!isOld || IsNote(line))
      result += whole;
    else if (!isHead && !IsValueLine(line, kind))
      unknown += whole;
  }
  if (!result.ends_with('\n')) result += "\r\n";
  return result + std::string(kind) + std::string(name) + "]\r\n" + entry + unknown;
}

std::string Line(const char* key, const std::string& value) {
  const std::string text = OneLine(value);
  return text.empty() ? "" : std::string(key) + "=" + text + "\r\n";
}

class Applying {
 public:
  Applying(Document& doc, Catalogues& catalogues, const Services& services, const OwnEntries& own)
      : doc_(doc), catalogues_(catalogues), page_(services.Page), own_(own) {}

  void Run() {
    if (!own_.Aircraft.empty()) ApplyAircraft();
    for (const auto& map : own_.Maps) ApplyMap(map);
  }

 private:
  void ApplyAircraft() {
    std::vector<Aircraft> rows = catalogues_.Aircraft.Rows();
    for (const auto& own : own_.Aircraft) {
      const std::string aircraftClass = ExactText(page_, own.Class);
      if (aircraftClass.empty()) continue;
      auto row = std::find_if(rows.begin(), rows.end(),
                              [&](const Aircraft& one) { return one.Class == aircraftClass; });
      if (row == rows.end()) row = rows.insert(rows.end(), NewRow(own, aircraftClass));
      Change(*row, own, rows);
      if (const std::string key = ExactText(page_, own.Key); !key.empty())
        catalogues_.OwnDogFight.push_back({row->Name, key, "R", !row->Flyable});
    }
    // The red ones stand first in all lists.
    std::stable_partition(rows.begin(), rows.end(),
                          [](const Aircraft& one) { return one.Side == "Red"; });
    catalogues_.Aircraft = AircraftTable(std::move(rows));
  }

  static Aircraft NewRow(const OwnAircraft& own, const std::string& aircraftClass) {
    Aircraft row;
    row.Class = row.Name = aircraftClass;
    row.Folder = SkinFolderOf(own.Key.empty() ? aircraftClass : own.Key);
    row.Weapons = DefaultLoadouts();
    return row;
  }

  void Change(Aircraft& row, const OwnAircraft& own, const std::vector<Aircraft>& rows) const {
    if (std::string name = PlaneNameText(page_, own.Name); !name.empty()) {
      UniqueTexts taken(page_);
      for (const auto& other : rows)
        if (&other != &row) taken.Reserve(other.Name), taken.Reserve(other.Class);
      row.Name = taken.Make(std::move(name), row.Class);
    }
    row.Side = own.IsBlue ? "Blue" : "Red";
    row.Flyable = own.Flyable;
    for (const auto& loadout : own.Loadouts) {
      const std::string key = ExactText(page_, loadout);
      const bool isKnown = std::any_of(
          row.Weapons.begin(), row.Weapons.end(),
          [&](const Loadout& one) { return one.Key && page_.LCase(*one.Key) == page_.LCase(key); });
      if (!key.empty() && !isKnown)
        row.Weapons.insert(row.Weapons.end() - (row.Weapons.empty() ? 0 : 1), {key, key});
    }
  }

  void ApplyMap(const OwnMap& own) {
    const std::string path = ExactText(page_, own.Path), name = ShownText(page_, own.Name);
    if (path.empty() || name.empty()) return;
    std::erase_if(doc_.Maps, [&](const MapRow& row) { return EqualNoCase(row.Path, path); });
    UniqueTexts taken(page_);
    for (const auto& row : doc_.Maps) taken.Reserve(row.Name);
    doc_.Maps.push_back({taken.Make(name, path), path});
  }

  Document& doc_;
  Catalogues& catalogues_;
  const CodePage& page_;
  const OwnEntries& own_;
};

}  // namespace

std::string OwnEntriesFile(const Services& services) { return BuildPath(services.AppPath, kFile); }

OwnEntries ParseOwnEntries(std::string_view bytes) {
  OwnEntries own;
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  OwnAircraft* aircraft = nullptr;
  OwnMap* map = nullptr;
  std::size_t number = 0;
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::string_view line = Trim(TakeLine(rest));
    ++number;
    if (line.empty() || line.starts_with('#')) continue;
    const std::string_view planeClass = NameOfHead(line, kAircraft), path = NameOfHead(line, kMap);
    if (line.starts_with('[')) aircraft = nullptr, map = nullptr;
    if (!planeClass.empty()) {
      aircraft = Put(own.Aircraft, &OwnAircraft::Class, planeClass);
    } else if (!path.empty()) {
      map = Put(own.Maps, &OwnMap::Path, path);
    } else {
      const bool isRight =
          aircraft ? SetLine(*aircraft, line, SetAircraft) : map && SetLine(*map, line, SetMap);
      if (!isRight)
        own.Troubles.push_back(std::to_string(number) + ": " +
                               OneLine(std::string(line.substr(0, kMostOfALine))));
    }
  }
  return own;
}

std::string WithOwnAircraft(std::string_view bytes, const OwnAircraft& entry) {
  std::string text = Line("name", entry.Name);
  text += entry.IsBlue ? "side=blue\r\n" : "side=red\r\n";
  text += entry.Flyable ? "flyable=yes\r\n" : "flyable=no\r\n";
  text += Line("key", entry.Key);
  for (const auto& loadout : entry.Loadouts) text += Line("loadout", loadout);
  text += Line("from", entry.From);
  return WithEntry(bytes, kAircraft, OneLine(entry.Class), text);
}

std::string WithOwnMap(std::string_view bytes, const OwnMap& entry) {
  return WithEntry(bytes, kMap, OneLine(entry.Path),
                   Line("name", entry.Name) + Line("from", entry.From));
}

std::string ReadOwnEntriesFile(const Services& services) {
  const std::string path = OwnEntriesFile(services);
  return services.Files.IsGone(path) ? "" : services.Files.ReadFile(path, kMostBytes);
}

void AddOwnAircraft(const Services& services, const OwnAircraft& entry) {
  const std::string bytes = WithOwnAircraft(ReadOwnEntriesFile(services), entry);
  services.Files.ReplaceFile(OwnEntriesFile(services), bytes);
}

void AddOwnMap(const Services& services, const OwnMap& entry) {
  const std::string bytes = WithOwnMap(ReadOwnEntriesFile(services), entry);
  services.Files.ReplaceFile(OwnEntriesFile(services), bytes);
}

OwnEntries ReadOwnEntries(const Services& services) {
  OwnEntries own;
  LogAndLeave(services, "ReadOwnEntries",
              [&] { own = ParseOwnEntries(ReadOwnEntriesFile(services)); });
  const std::size_t count = own.Troubles.size(), logged = std::min(count, kMostLogged);
  const auto log = [&](const std::string& text) {
    LogError(services, std::string(kFile) + text, "ReadOwnEntries");
  };
  for (std::size_t i = 0; i < logged; ++i) log(", line " + own.Troubles[i]);
  if (count > logged) log(": " + std::to_string(count - logged) + " more lines");
  return own;
}

void ApplyOwnEntries(Document& doc, Catalogues& catalogues, const Services& services,
                     const OwnEntries& own) {
  catalogues.OwnDogFight.clear();
  Applying(doc, catalogues, services, own).Run();
}

}  // namespace rws
