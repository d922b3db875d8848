#pragma once

#include <string>
#include <string_view>

namespace rws {

/** SHA-1 of some bytes, as forty hexadecimal digits in lower case. It tells one file from another;
    it is no protection against a file that is made to look like another. */
std::string Sha1(std::string_view bytes);

}  // namespace rws
