#include "gamelists/names_cache.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstring>
#include <type_traits>

#include "services/faults.h"
#include "services/paths.h"

namespace rws {

namespace {

/** To be raised with every change of what is kept, or of how lists are read. */
constexpr std::string_view kMark = "RWS lists 1\n", kEnd = "\nwhole\n";

class Packer {
 public:
  static constexpr bool kReads = false;
  void Do(const std::string& text) {
    Do(text.size());
    Bytes += text;
  }
  template <std::integral Number>
  void Do(const Number& number) {
    const auto value = static_cast<std::uint64_t>(number);
    for (int i = 0; i < 8; ++i) Bytes += static_cast<char>(value >> (8 * i));
  }
  std::string Bytes;
};

/** Stops at the first thing that cannot be. */
class Unpacker {
 public:
  static constexpr bool kReads = true;
  explicit Unpacker(std::string_view bytes) : rest_(bytes) {}
  void Do(std::string& text) {
    std::uint64_t size = 0;
    Do(size);
    if (size > rest_.size()) return Stop();
    text = rest_.substr(0, static_cast<std::size_t>(size));
    rest_.remove_prefix(static_cast<std::size_t>(size));
  }
  template <std::integral Number>
  void Do(Number& number) {
    if (rest_.size() < 8) return Stop();
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < 8; ++i)
      value |= static_cast<std::uint64_t>(static_cast<unsigned char>(rest_[i])) << (8 * i);
    rest_.remove_prefix(8);
    number = static_cast<Number>(value);
  }
  std::size_t Left() const { return rest_.size(); }
  void Stop() {
    IsWhole = false;
    rest_ = {};
  }
  bool IsWhole = true;

 private:
  std::string_view rest_;
};

// One description serves both ways; `Of` is const where it is packed.
template <class Way, class Of>
void Each(Way& way, Of& row);

template <class Way, class Rows>
void All(Way& way, Rows& rows) {
  std::size_t size = rows.size();
  way.Do(size);
  if constexpr (Way::kReads) {
    // One by one, so that a wrong count ends with the bytes and does not fill the memory.
    for (rows.clear(); rows.size() < size && way.IsWhole;) Each(way, rows.emplace_back());
  } else {
    for (auto& row : rows) Each(way, row);
  }
}

template <class Way, class Army>
void Side(Way& way, Army& army) {
  auto number = static_cast<std::uint8_t>(army);
  way.Do(number);
  if constexpr (Way::kReads) army = number > 2 ? ListedArmy::None : static_cast<ListedArmy>(number);
}

template <class Way, class Of>
void Each(Way& way, Of& row) {
  using Row = std::remove_const_t<Of>;
  if constexpr (std::is_same_v<Row, std::string>) {
    way.Do(row);
  } else if constexpr (std::is_same_v<Row, ListedLoadout>) {
    way.Do(row.Key), way.Do(row.Text);
  } else if constexpr (std::is_same_v<Row, ListedAircraft>) {
    way.Do(row.Key), way.Do(row.Class), way.Do(row.Name);
    Side(way, row.Army);
    way.Do(row.DefaultCode);
    All(way, row.Loadouts);
  } else if constexpr (std::is_same_v<Row, ListedMap>) {
    way.Do(row.Path), way.Do(row.Name);
  } else if constexpr (std::is_same_v<Row, ListedRegiment>) {
    way.Do(row.Code), way.Do(row.Name), way.Do(row.Info), way.Do(row.Branch), way.Do(row.Country);
    Side(way, row.Army);
  } else if constexpr (std::is_same_v<Row, ListedParked>) {
    way.Do(row.Key), way.Do(row.Class);
  } else if constexpr (std::is_same_v<Row, ListedCountry>) {
    way.Do(row.Code), way.Do(row.Name);
  } else if constexpr (std::is_same_v<Row, ListSource>) {
    way.Do(row.List), way.Do(row.Path), way.Do(row.Entries);
  } else if constexpr (std::is_same_v<Row, ListTrouble>) {
    way.Do(row.Path), way.Do(row.Line), way.Do(row.Text);
  } else {
    static_assert(std::is_same_v<Row, SeenPath>);
    way.Do(row.Path), way.Do(row.Stamp.Exists), way.Do(row.Stamp.Size), way.Do(row.Stamp.Modified);
    way.Do(row.IsFolder);
  }
}

template <class Way, class Kept>
void Whole(Way& way, Kept& kept) {
  way.Do(kept.Language), way.Do(kept.ReadAt);
  All(way, kept.Seen);
  auto& lists = kept.Lists;
  way.Do(lists.Pack.Name), way.Do(lists.Pack.Folders);
  All(way, lists.Pack.Roots);
  All(way, lists.Names.Aircraft), All(way, lists.Names.Maps), All(way, lists.Names.Regiments);
  All(way, lists.Names.Parked), All(way, lists.Names.Countries);
  All(way, lists.Sources), All(way, lists.Troubles);
}

constexpr std::array kFolders{
    "com/maddox/il2/objects", "i18n", "maps", "PaintSchemes/Red", "PaintSchemes/Blue",
    "PaintSchemes/None"};

}  // namespace

std::vector<SeenPath> LookAtLists(const FileSystem& files, const GameLists& lists) {
  std::vector<SeenPath> seen;
  const auto look = [&](const std::string& path) {
    SeenPath one{files.Resolve(path), files.Stamp(path)};
    one.IsFolder = files.FolderExists(one.Path);
    if (std::find(seen.begin(), seen.end(), one) == seen.end()) seen.push_back(std::move(one));
  };
  for (const auto& root : lists.Pack.Roots) {
    look(root);
    for (const std::string_view folder : kFolders)
      for (std::size_t end = folder.find('/');; end = folder.find('/', end + 1)) {
        const std::string path = files.FindFolder(BuildPath(root, folder.substr(0, end)));
        if (path.empty()) break;
        look(path);
        if (end == folder.npos) break;
      }
  }
  for (const auto& source : lists.Sources) look(source.Path);
  return seen;
}

bool IsAsSeen(const FileSystem& files, const std::vector<SeenPath>& seen) {
  return std::all_of(seen.begin(), seen.end(), [&](const SeenPath& one) {
    FileStamp now = files.Stamp(one.Path);
    // The size of a folder may be of anything.
    if (one.IsFolder) now.Size = one.Stamp.Size;
    return now == one.Stamp;
  });
}

std::string PackLists(const KeptLists& kept) {
  Packer packer;
  packer.Bytes = kMark;
  Whole(packer, kept);
  packer.Bytes += kEnd;
  return std::move(packer.Bytes);
}

std::optional<KeptLists> UnpackLists(std::string_view bytes) {
  if (!bytes.starts_with(kMark) || !bytes.ends_with(kEnd) ||
      bytes.size() < kMark.size() + kEnd.size()) {
    return {};
  }
  bytes.remove_prefix(kMark.size());
  bytes.remove_suffix(kEnd.size());
  Unpacker unpacker(bytes);
  KeptLists kept;
  Whole(unpacker, kept);
  if (!unpacker.IsWhole || unpacker.Left() > 0) return {};
  return kept;
}

}  // namespace rws
