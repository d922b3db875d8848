#include "cli/records_json.h"

#include <nlohmann/json.hpp>
#include <string_view>
#include <type_traits>

#include "mission/fields.h"
#include "services/code_page.h"

namespace rws {

namespace {

using Json = nlohmann::ordered_json;

Json Text(std::string_view bytes) {
  std::string utf8;
  for (const char byte : bytes) AppendUtf8(utf8, static_cast<unsigned char>(byte));
  return utf8;
}

Json Value(const std::string& text) { return Text(text); }
Json Value(const SharedText& text) { return Text(text); }

template <class Number>
requires std::is_arithmetic_v<Number> Json Value(Number number) { return number; }

template <class Element>
Json Value(const Element& record) requires requires {
  FieldsOf<Element>::kTable;
};

template <class Array>
Json Value(const Array& array) requires requires {
  array[0], array.size();
}
{
  Json list = Json::array();
  for (std::size_t i = 0; i < array.size(); ++i)
    if constexpr (std::is_same_v<Array, LineArray>)
      list.push_back(Text(array[i]));
    else
      list.push_back(Value(array[i]));
  return list;
}

template <class Element>
Json Value(const Element& record) requires requires {
  FieldsOf<Element>::kTable;
}
{
  Json json;
  ForEachField<Element>([&](const auto& field) {
    // What a record was read from, no part of the mission.
    const std::string_view name = field.Name;
    if (name == "AsRead" || name.starts_with("Kept") || name == "KeepsLines") return;
    json[field.Name] = Value(record.*field.Pointer);
  });
  return json;
}

}  // namespace

std::string MissionJson(const Mission& mission) { return Value(mission).dump(-1, ' ', true); }

}  // namespace rws
