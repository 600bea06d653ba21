#include "dictionary/data_type.h"

namespace tagmend {

constexpr std::array<const char*, 15> type_names = {
    "ZERO",           "UNSIGNED BYTE",   "STRING",
    "UNSIGNED SHORT", "UNSIGNED LONG",   "UNSIGNED RATIONAL",
    "SIGNED BYTE",    "UNDEFINED",       "SIGNED SHORT",
    "SIGNED LONG",    "SIGNED RATIONAL", "SIGNED FLOAT",
    "DOUBLE FLOAT",   "IFD OFFSET",      "UNSIGNED SHORT or UNSIGNED_LONG",
};

constexpr std::array<const char*, 15> type_short_names = {
    "???", "UBY", "STR", "USH", "ULG", "URT", "SBY", "UND",
    "SSH", "SLG", "SRT", "SFL", "DFL", "IFD", "USL",
};

}  // namespace tagmend
