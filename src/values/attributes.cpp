#include "values/attributes.h"

#include <array>

namespace korvex {

namespace {

using Class = ValueClass;
using Kind = DataKind;
using Largest = LargestValue;
using Limit = FormatLimit;

// Names with a number are those of attributes that differ from their like in one thing alone.
// clang-format off
constexpr AttributeTraits
    //            values            kind of data          quoted signed checks largest value                parts of a format
    unknown    = {Class::none,      Kind::none,           false, false, false, Largest::none,               Limit::none},
    quoted     = {Class::character, Kind::character,      true,  true,  false, Largest::small_letters,      Limit::text},
    unquoted   = {Class::character, Kind::character,      false, false, true,  Largest::small_letters,      Limit::text},
    national   = {Class::national,  Kind::national,       true,  false, true,  Largest::full_width_letters, Limit::number},
    decimal    = {Class::numeric,   Kind::decimal,        false, false, true,  Largest::number,             Limit::number},
    decimal_5  = {Class::numeric,   Kind::decimal,        false, false, true,  Largest::small_letters,      Limit::number},
    bare       = {Class::numeric,   Kind::bare_number,    false, false, true,  Largest::small_letters,      Limit::none},
    number     = {Class::numeric,   Kind::number_or_text, false, false, true,  Largest::number,             Limit::number_or_text},
    number_27  = {Class::numeric,   Kind::number_or_text, false, false, true,  Largest::number,             Limit::number},
    formatless = {Class::none,      Kind::number_or_text, false, false, true,  Largest::none,               Limit::number_or_text},
    date       = {Class::date,      Kind::date,           true,  false, false, Largest::digits,             Limit::none},
    time       = {Class::time,      Kind::time,           true,  false, false, Largest::none,               Limit::moment},
    timestamp  = {Class::timestamp, Kind::timestamp,      true,  false, false, Largest::none,               Limit::moment};

constexpr std::array<AttributeTraits, number_of(attribute::highest) + 1> all_traits = {
    unknown,
    quoted,     quoted,    quoted,    decimal,  decimal_5, unquoted, unquoted, bare,      //  1 to  8
    bare,       bare,      national,  national, decimal,   decimal,  decimal,  decimal,   //  9 to 16
    decimal,    decimal,   number,    number,   number,    number,   number,   number,    // 17 to 24
    number,     number,    number_27, date,     formatless, formatless, time,  timestamp, // 25 to 32
};
// clang-format on

}  // namespace

const AttributeTraits& traits_of(Attribute attribute) {
  const bool is_known = attribute > attribute::none && attribute <= attribute::highest;
  return all_traits[is_known ? static_cast<std::size_t>(attribute) : 0];
}

std::int32_t effective_digits(const ItemAttributes& item) {
  return is_character(item.attribute) && item.digits == 0 ? item.length : item.digits;
}

}  // namespace korvex
