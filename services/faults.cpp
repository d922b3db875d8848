#include "services/faults.h"

namespace rws {

namespace {
std::string Quoted(std::string_view text, std::string_view path) {
  return std::string(text) + ": \"" + std::string(path) + "\"";
}
}  // namespace

Fault InvalidCallFault() { return {fault::InvalidCall, "Invalid procedure call or argument"}; }
Fault OverflowFault() { return {fault::Overflow, "Overflow"}; }
Fault OutOfMemoryFault() { return {fault::OutOfMemory, "Out of memory"}; }
Fault SubscriptFault() { return {fault::Subscript, "Subscript out of range"}; }
Fault TypeMismatchFault() { return {fault::TypeMismatch, "Type mismatch"}; }

Fault FileNotFoundFault(std::string_view path) {
  return {fault::FileNotFound, Quoted("File not found", path)};
}

Fault FileExistsFault(std::string_view path) {
  return {fault::FileExists, Quoted("File already exists", path)};
}

Fault PathNotFoundFault(std::string_view path) {
  return {fault::PathNotFound, Quoted("Path not found", path)};
}

Fault FileFault(int number, std::string_view action, std::string_view path,
                std::string_view reason) {
  return {number, Quoted("Cannot " + std::string(action), path) + ": " + std::string(reason)};
}

}  // namespace rws
