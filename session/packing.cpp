#include "session/packing.h"

#include <charconv>
#include <type_traits>

#include "mission/fields.h"
#include "services/checksum.h"
#include "services/faults.h"

namespace rws {

namespace {

/** Each value is a text, with its length before it: "4:fuel". */
class Packer {
 public:
  void Text(std::string_view text) { bytes_ += PackText(text); }
  template <class Value>
  void Put(const Value& value) {
    if constexpr (kIsText<Value>) {
      Text(value);
    } else if constexpr (std::is_same_v<Value, LineArray>) {
      Put(value.size());
      Text(value.FileText());
    } else if constexpr (std::is_arithmetic_v<Value>) {
      char text[64];
      const auto number = +value;
      Text({text, static_cast<std::size_t>(std::to_chars(text, text + 64, number).ptr - text)});
    } else if constexpr (requires { FieldsOf<Value>::kTable; }) {
      ForEachField<Value>([&](const auto& field) { Put(value.*field.Pointer); });
    } else {
      Put(value.size());
      for (const auto& element : value) Put(element);
    }
  }
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

class Unpacker {
 public:
  explicit Unpacker(std::string_view bytes) : bytes_(bytes) {}

  std::string_view Text() {
    const std::size_t colon = bytes_.find(':');
    if (colon == bytes_.npos) throw Torn();
    const std::size_t size = Number<std::size_t>(bytes_.substr(0, colon));
    if (size > bytes_.size() - colon - 1) throw Torn();
    const auto text = bytes_.substr(colon + 1, size);
    bytes_.remove_prefix(colon + 1 + size);
    return text;
  }
  template <class Value>
  void Get(Value& value) {
    if constexpr (kIsText<Value>) {
      value = Text();
    } else if constexpr (std::is_same_v<Value, LineArray>) {
      const auto size = Number<std::size_t>(Text());
      const std::string text(Text());
      value = LineArray::FromFile(text);
      // Lines that keep their own ends.
      if (value.size() != size || value.FileText() != text) value = LineArray::FromFileAsIs(text);
    } else if constexpr (std::is_same_v<Value, bool>) {
      value = Number<int>(Text()) != 0;
    } else if constexpr (std::is_arithmetic_v<Value>) {
      value = Number<Value>(Text());
    } else if constexpr (requires { FieldsOf<Value>::kTable; }) {
      ForEachField<Value>([&](const auto& field) { Get(value.*field.Pointer); });
    } else {
      const auto size = Number<std::size_t>(Text());
      if constexpr (requires { value.emplace_back(); }) {
        // One by one, so that a wrong number ends with the bytes and does not fill the memory.
        value.clear();
        for (std::size_t i = 0; i < size; ++i) Get(value.emplace_back());
        value.shrink_to_fit();
      } else {
        if (value.size() != size) throw Torn();
        for (auto& element : value) Get(element);
      }
    }
  }
  std::string_view Rest() const { return bytes_; }

  static Fault Torn() { return Fault(fault::InputPastEnd, "The file is damaged."); }

 private:
  template <class Value>
  static Value Number(std::string_view text) {
    Value value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) throw Torn();
    return value;
  }

  std::string_view bytes_;
};

/** The lines as they were read are one text with the lines until one is changed. */
template <class Member>
bool IsAsRead(const Field<Member>& field) {
  return std::string_view(field.Name) == "AsRead";
}

}  // namespace

std::string PackText(std::string_view text) {
  return std::to_string(text.size()).append(1, ':').append(text);
}

std::string TakeText(std::string_view& bytes) {
  Unpacker unpacker(bytes);
  std::string text(unpacker.Text());
  bytes = unpacker.Rest();
  return text;
}

std::string PackMission(const Mission& whole) {
  // Flights that were read from the mission's own lines need none of theirs.
  Mission mission = whole;
  for (auto& flight : mission.Flights)
    if (flight.KeptIn.SharesWith(mission.AsRead)) flight.KeptIn = LineArray();
  Packer packer;
  const bool same = mission.Lines == mission.AsRead;
  packer.Put(same);
  ForEachField<Mission>([&](const auto& field) {
    if (!same || !IsAsRead(field)) packer.Put(mission.*field.Pointer);
  });
  return packer.Take();
}

Mission UnpackMission(std::string_view bytes) {
  Mission mission;
  Unpacker unpacker(bytes);
  bool same = false;
  unpacker.Get(same);
  ForEachField<Mission>([&](const auto& field) {
    if (!same || !IsAsRead(field)) unpacker.Get(mission.*field.Pointer);
  });
  if (!unpacker.Rest().empty()) throw Unpacker::Torn();
  if (same) mission.AsRead = mission.Lines;
  for (auto& flight : mission.Flights)
    if (mission.KeepsLines && !flight.KeptName.empty() && flight.KeptIn.empty())
      flight.KeptIn = mission.AsRead;
  return mission;
}

std::string RecordsVersion() {
  std::string names;
  const auto add = [&](const auto& field) { names.append(field.Name).append(1, ' '); };
  ForEachField<Waypoint>(add);
  ForEachField<PlaneSlot>(add);
  ForEachField<Flight>(add);
  ForEachField<BornPlace>(add);
  ForEachField<Mission>(add);
  return Sha1(names).substr(0, 8);
}

}  // namespace rws
