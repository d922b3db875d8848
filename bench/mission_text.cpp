#include "bench/mission_text.h"

#include <algorithm>

namespace rws::bench {

namespace {

std::string Number(std::size_t seed, std::size_t range) {
  return std::to_string(1000 + seed * 7919 % range) + "." + std::to_string(10 + seed * 31 % 90);
}

void AddFlight(std::string& text, std::size_t index) {
  const std::string name = "r01" + std::to_string(index / 10) + std::to_string(index % 10);
  text += "[" + name + "]\r\n  Planes 4\r\n  Skill 1\r\n  skin0 summer camouflage.bmp\r\n" +
          "  Class air.IL_2_1941Early\r\n  Fuel 100\r\n  weapons default\r\n[" + name + "_Way]\r\n";
  for (std::size_t i = 0; i < 9; ++i)
    text += "  NORMFLY " + Number(index * 9 + i, 200000) + " " + Number(index + i, 190000) +
            " 1500.00 350.00 &0\r\n";
}

}  // namespace

std::string MissionText(std::size_t bytes, std::size_t flights) {
  std::string text =
      "[MAIN]\r\n  MAP Smolensk/sload.ini\r\n  TIME 12.0\r\n  CloudType 1\r\n  CloudHeight "
      "1500.0\r\n"
      "  player r0100\r\n  army 1\r\n  playerNum 0\r\n[SEASON]\r\n  Year 1942\r\n  Month 6\r\n"
      "  Day 22\r\n[WEATHER]\r\n  WindDirection 0.0\r\n  WindSpeed 0.0\r\n  Gust 0\r\n[Wing]\r\n";
  if (flights == 0) flights = std::clamp<std::size_t>(bytes / 20000, 2, 12);
  for (std::size_t i = 0; i < flights; ++i)
    text += "  r01" + std::to_string(i / 10) + std::to_string(i % 10) + "\r\n";
  for (std::size_t i = 0; i < flights; ++i) AddFlight(text, i);
  text += "[Chiefs]\r\n  0_Chief Armor.4-T34 1\r\n[0_Chief_Road]\r\n";
  while (text.size() < bytes * 2 / 5)
    text += "  " + Number(text.size(), 150000) + " " + Number(text.size() / 3, 150000) +
            " 120.00 0 2 3.055555582046509\r\n";
  text += "[NStationary]\r\n";
  for (std::size_t i = 0; text.size() < bytes; ++i)
    text += "  " + std::to_string(i) + "_Static vehicles.artillery.Artillery$ZIS3 1 " +
            Number(i, 200000) + " " + Number(i * 3, 190000) + " 360.00 0.0 0 1 1\r\n";
  return text + "[Buildings]\r\n[Bridge]\r\n[House]\r\n";
}

}  // namespace rws::bench
