#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rws {

/** The lines of a mission file, without their line ends. They stand in one buffer, each followed by
    its end, so that reading and writing a file is one copy and two records compare at the speed of
    memory. A copy shares the buffer until one of the two is changed:
   copying, and comparing two that share, costs nothing. A view of a line or of the text is good
   until this array is changed. Indexes count from 0. */
class LineArray {
 public:
  LineArray() = default;
  /** Lines of a file's bytes. Only a carriage return and line feed pair ends a line; the last line
      needs no end. More than `kLargest` bytes are an overflow. */
  static LineArray FromFile(std::string bytes);
  /** The same for a file that is to keep its bytes: a line feed or a carriage return alone ends a
      line too, and each line keeps its own end, the last one also none. */
  static LineArray FromFileAsIs(std::string bytes);

  std::size_t size() const { return Kept().Starts.size(); }
  bool empty() const { return Kept().Starts.empty(); }
  std::string_view operator[](std::size_t index) const {
    const Buffer& kept = Kept();
    const std::size_t start = kept.Starts[index];
    return std::string_view(kept.Text).substr(start, End(kept, index) - start);
  }

  /** The characters that end a line; "" for a last one without an end. */
  std::string_view EndOf(std::size_t index) const {
    const Buffer& kept = Kept();
    const std::size_t end = End(kept, index);
    return std::string_view(kept.Text).substr(end, Behind(kept, index) - end);
  }

  void Add(std::string_view line) { Add({}, line); }
  /** Appends a line made of an indent and a text. */
  void Add(std::string_view indent, std::string_view line);
  /** Appends the lines `first` to `last` - 1 of another array as they are. */
  void AddRange(const LineArray& lines, std::size_t first, std::size_t last);
  /** Changes nothing, and goes on sharing, when the line is this one already. */
  void Set(std::size_t index, std::string_view line);
  void Reserve(std::size_t bytes, std::size_t lines);

  /** The text of a file that holds these lines. */
  const std::string& FileText() const { return Kept().Text; }
  /** Offset in `FileText` at which a line begins, and at which it ends. */
  std::size_t Start(std::size_t index) const { return Kept().Starts[index]; }
  std::size_t End(std::size_t index) const { return End(Kept(), index); }
  /** Index of the line that holds an offset of `FileText`. */
  std::size_t LineAt(std::size_t offset) const;

  bool operator==(const LineArray& other) const {
    return buffer_ == other.buffer_ || FileText() == other.FileText();
  }
  /** True if both hold one buffer, so that the second takes no memory of its own. */
  bool SharesWith(const LineArray& other) const { return buffer_ == other.buffer_; }

  /** A mission of a gigabyte is no mission; a file that grows past it is given up. */
  static constexpr std::size_t kLargest = std::size_t{1} << 30;

 private:
  struct Buffer {
    std::string Text;
    std::vector<std::uint32_t> Starts;
  };

  static const Buffer kNone;

  static std::size_t Behind(const Buffer& buffer, std::size_t index) {
    const auto& starts = buffer.Starts;
    return index + 1 < starts.size() ? starts[index + 1] : buffer.Text.size();
  }
  static std::size_t End(const Buffer& buffer, std::size_t index) {
    const std::string& text = buffer.Text;
    const std::size_t end = Behind(buffer, index);
    if (text[end - 1] == '\r') return end - 1;
    if (text[end - 1] != '\n') return end;
    return end > buffer.Starts[index] + 1 && text[end - 2] == '\r' ? end - 2 : end - 1;
  }
  const Buffer& Kept() const { return buffer_ ? *buffer_ : kNone; }
  /** The buffer to change, which is no other's from now on. */
  Buffer& Own();

  /** Null while nothing was ever added. */
  std::shared_ptr<Buffer> buffer_;
};

}  // namespace rws
