#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rws {

/** The lines of a mission file, without their line ends. They stand in one buffer, each followed by
    carriage return and line feed, so that reading and writing a file is one copy and two records
    compare at the speed of memory. Indexes count from 0. */
class LineArray {
 public:
  LineArray() = default;
  /** Lines of a file's bytes. Only a carriage return and line feed pair ends a line; the last line
      needs no end. More than `kLargest` bytes are an overflow. */
  static LineArray FromFile(std::string bytes);

  std::size_t size() const { return starts_.size(); }
  bool empty() const { return starts_.empty(); }
  std::string_view operator[](std::size_t index) const {
    return std::string_view(text_).substr(starts_[index], End(index) - starts_[index]);
  }

  void Add(std::string_view line) { Add({}, line); }
  /** Appends a line made of an indent and a text. */
  void Add(std::string_view indent, std::string_view line);
  /** Appends the lines `first` to `last` - 1 of another array as they are. */
  void AddRange(const LineArray& lines, std::size_t first, std::size_t last);
  void Set(std::size_t index, std::string_view line);
  void Reserve(std::size_t bytes, std::size_t lines);

  /** The text of a file that holds these lines. */
  const std::string& FileText() const { return text_; }
  /** Offset in `FileText` at which a line begins, and at which it ends. */
  std::size_t Start(std::size_t index) const { return starts_[index]; }
  std::size_t End(std::size_t index) const {
    return (index + 1 < starts_.size() ? starts_[index + 1] : text_.size()) - 2;
  }
  /** Index of the line that holds an offset of `FileText`. */
  std::size_t LineAt(std::size_t offset) const;

  bool operator==(const LineArray& other) const { return text_ == other.text_; }

  /** A mission of a gigabyte is no mission; a file that grows past it is given up. */
  static constexpr std::size_t kLargest = std::size_t{1} << 30;

 private:
  std::string text_;
  std::vector<std::uint32_t> starts_;
};

}  // namespace rws
