#pragma once

#include "mission/document.h"

namespace rws {

/** Code fills controls for as long as this lives; afterwards `bLoading` is what it was. */
class Loading {
 public:
  explicit Loading(Document& doc) : doc_(doc), before_(doc.bLoading) { doc_.bLoading = true; }
  ~Loading() { doc_.bLoading = before_; }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;

 private:
  Document& doc_;
  bool before_;
};

}  // namespace rws
