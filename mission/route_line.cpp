#include "mission/route_line.h"

#include <algorithm>

#include "mission/line_values.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

void RouteLine::Read(std::string_view line) {
  line = Trim(line);
  words_.reserve(8);
  SplitInto(words_, line, ' ');
  marker_ = line.substr(line.size() - std::min<std::size_t>(2, line.size()));
  if (!Contains(marker_, "&")) marker_ = {};
}

std::string_view RouteLine::Word(std::size_t place) const {
  return At(words_, static_cast<std::ptrdiff_t>(place));
}

double RouteLine::X() const { return CDbl(IntegerPart(Word(kX))); }
double RouteLine::Y() const { return CDbl(IntegerPart(Word(kY))); }

}  // namespace rws
