#pragma once

#include "orv/Export.h"
#include "orv/time/Time.h"

#include <string>

namespace Zan::Orv::Core::Service {

class ITimeSymbolTable;
class TimeString;

/// Reads a date, and a time behind it, as a person writes them: "25/12/2000 14:30", "JAN 5 2000", "5.1.2000 2:30 PM".
///
/// Three components, numbers or words, separated by blanks or one of "-", "/", ".", ","; then, if wanted, hour and
/// minute, second and fraction separated by ":" or ".", and a designator. Which component is which is found out in
/// this order: a number above 31 is the year; a word is the month; beside a known year, a number from 13 to 31 is the
/// day; what is left over is the third; two equal numbers need no order. Only then is the date order of the user's
/// locale asked.
///
/// Month names are JAN to DEC (and JLY) and JANUARY to DECEMBER in capitals, and those of the user's locale in its
/// own case. The designators are those of the locale. A year below 100 is of the 20th century; with
/// `twoDigitYears2000` one below 69 is of the 21st.
///
/// The user's locale is what the environment names at the moment of the call. Linear in the text. Safe on any thread
/// while no other changes the environment.
///
/// \throws TimeException for a text that is no date, contradicts itself, or needs an order that the locale does not
///     have.
/// \throws std::out_of_range the calendar's, for a date that does not exist; ServiceException for the year 10000.
/// \throws std::runtime_error the standard library's, when the environment names an unknown locale.
ORV_API Time ParseTime(std::string const& text, bool twoDigitYears2000);

/// Evaluates a time that may be symbolic: a date of the first form or the name of a symbol, and signed offsets behind
/// it, as in "START + 2 months - 3 days". A name is looked up in `table`, and its definition evaluated in the same way;
/// offsets of a definition are applied before those of what refers to it. A name always wins over a date. It is a letter
/// or an underscore and then letters, digits and underscores; no text refers to any other name that a table holds.
///
/// A chain of definitions may have any length. Safe as the first form is, and as reading `table` is.
/// \throws TimeException for a name that is not defined or defined by itself, for a text with a line break inside, and
///     what `ParseTimeOffset` and the first form throw.
ORV_API Time ParseTime(TimeString const& time, ITimeSymbolTable const* table, bool twoDigitYears2000);

} // namespace Zan::Orv::Core::Service
