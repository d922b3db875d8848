#pragma once

#include <optional>
#include <string>

class QNetworkReply;

namespace rws {

/** Gets one small document at a time over HTTP. */
class Fetcher {
 public:
  /** The bytes at an address. Nothing when there is no answer, it is a redirection or has a status
      of 400 or more, its body exceeds 4 KB or another fetch is under way. Waits without a limit of
     its own; user interface events run meanwhile, commands among them. */
  std::optional<std::string> Fetch(const std::string& url);
  /** Ends a fetch that is under way; it gives nothing. */
  void Cancel();

 private:
  QNetworkReply* running_ = nullptr;
};

}  // namespace rws
