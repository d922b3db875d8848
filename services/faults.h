#pragma once

#include <cstddef>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace rws {

/** What went wrong, as a number of the classic run time and a text that can be shown to the user.
    Faults about a file name the file and the reason. */
struct Fault : std::exception {
  Fault(int number, std::string text) : Number(number), Text(std::move(text)) {}
  const char* what() const noexcept override { return Text.c_str(); }

  int Number;
  std::string Text;
};

namespace fault {
constexpr int InvalidCall = 5, Overflow = 6, OutOfMemory = 7, Subscript = 9, TypeMismatch = 13,
              FileNotFound = 53, FileOpen = 55, FileIo = 57, FileExists = 58, InputPastEnd = 62,
              Permission = 70, OtherDisk = 74, PathNotFound = 76, InvalidPicture = 481;
}

Fault InvalidCallFault();
Fault OverflowFault();
Fault OutOfMemoryFault();
Fault SubscriptFault();
Fault TypeMismatchFault();
Fault FileNotFoundFault(std::string_view path);
Fault FileExistsFault(std::string_view path);
Fault PathNotFoundFault(std::string_view path);

/** Fault for a failed operation on `path`; `reason` is the system's own text. */
Fault FileFault(int number, std::string_view action, std::string_view path,
                std::string_view reason);

/** The element at a zero-based index, or a subscript fault when there is none. */
template <class Array>
decltype(auto) At(Array& array, std::ptrdiff_t index) {
  if (index < 0 || index >= static_cast<std::ptrdiff_t>(array.size())) throw SubscriptFault();
  return array[static_cast<std::size_t>(index)];
}

/** Runs `body`; when it fails, hands the fault to `onFault` and returns false. Every trap of the
    program is this one. */
template <class Body, class OnFault>
bool Trap(Body&& body, OnFault&& onFault) {
  try {
    body();
    return true;
  } catch (const Fault& caught) {
    onFault(caught);
  } catch (const std::bad_alloc&) {
    onFault(OutOfMemoryFault());
  } catch (const std::length_error&) {
    onFault(OutOfMemoryFault());
  }
  return false;
}

/** Runs `body` and goes on at the next statement whatever happens; false if it failed. */
template <class Body>
bool ResumeNext(Body&& body) {
  return Trap(body, [](const Fault&) {});
}

}  // namespace rws
