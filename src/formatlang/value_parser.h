#pragma once

#include <cstdint>
#include <string_view>

#include "values/error_codes.h"
#include "values/records.h"

// Reading value texts into value records. All operations take the text without its leading sign,
// leave the record's sign alone, set every field that the kind uses, and answer the code of the
// first rule broken.
namespace korvex {

inline constexpr std::size_t max_value_length = 128;

// First and last moments that dates and timestamps may take, as numbers of their digits.
inline constexpr std::int64_t first_date = 19700101;
inline constexpr std::int64_t last_date = 20380119;
inline constexpr std::int64_t first_date_time = 90000;
inline constexpr std::int64_t last_date_time = 31407;

// By the rule of the element's kind.
ErrorCode parse_value(const FmtItemRec& element, std::string_view text, FmtValRec& value);

// By the rule for numbers, whatever the element's kind: this is how increments are read.
ErrorCode parse_number(const FmtItemRec& element, std::string_view text, FmtValRec& value);

ErrorCode parse_characters(const FmtItemRec& element, std::string_view text, FmtValRec& value);

// Dates, times and timestamps.
ErrorCode parse_moment(const FmtItemRec& element, std::string_view text, FmtValRec& value);

}  // namespace korvex
