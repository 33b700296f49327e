// To datetime and smalldatetime.

#include "tsql/calendar.h"
#include "tsql/conversion.h"
#include "tsql/date_text.h"

namespace tsql::conversion {
namespace {

[[noreturn]] void throwOutOfRange(const std::string& from, TypeKind to) {
  const std::string target = typeOf(to).baseName();
  throw SqlError(242, "The conversion of a " + from + " data type to a " + target +
                          " data type resulted in an out-of-range value.");
}

std::int64_t readText(const Source& from, TypeKind to) {
  const ReadDate read = readDate(from.text(), from.style);
  switch (read.status) {
    case ReadDate::Status::ok:
      return read.ticks;
    case ReadDate::Status::range:
      throwOutOfRange(from.textName(), to);
    case ReadDate::Status::syntax:
      break;
  }
  if (to == TypeKind::smalldatetime)
    throw SqlError(295, "Conversion failed when converting character string to smalldatetime data type.");
  throw SqlError(241, "Conversion failed when converting date and/or time from character string.");
}

// Days since 1900-01-01 as ticks.
std::int64_t ticksOfNumber(const Source& from, TypeKind to) {
  const std::string target = typeOf(to).baseName();
  if (isApproximate(from.kind())) {
    const double ticks = std::round(from.real() * static_cast<double>(ticksPerDay));
    if (!(ticks >= static_cast<double>(firstTick) && ticks <= static_cast<double>(lastTick))) throwOverflow(target);
    return static_cast<std::int64_t>(ticks);
  }
  const Int128 units = from.units();
  const Int128 one = powerOfTen(from.scale());
  const Int128 days = units / one;
  if (days < firstDay || days > lastDay) throwOverflow(target);
  const Int128 ticks =
      days * ticksPerDay + rescale(multiplyDecimal(units % one, from.scale(), ticksPerDay, 0, 6), 6, 0);
  if (ticks < firstTick || ticks > lastTick) throwOverflow(target);
  return static_cast<std::int64_t>(ticks);
}

// 4 bytes of days and 4 of ticks; a smalldatetime has 2 of days and 2 of minutes.
std::int64_t ticksOfBytes(const Source& from, TypeKind to) {
  const bool small = to == TypeKind::smalldatetime;
  const auto bits = static_cast<std::uint64_t>(integerOfBytes(from.bytes(), small ? 4 : 8));
  const std::int64_t day =
      small ? static_cast<std::int64_t>(bits >> 16 & 0xFFFF) : static_cast<std::int32_t>(bits >> 32);
  const std::int64_t rest =
      small ? static_cast<std::int64_t>(bits & 0xFFFF) * ticksPerMinute : static_cast<std::int64_t>(bits & 0xFFFFFFFF);
  if (day < firstDay || day > lastDay || rest >= ticksPerDay) throwOverflow(typeOf(to).baseName());
  return day * ticksPerDay + rest;
}

}  // namespace

Datum toDate(const Source& from, TypeKind to) {
  const TypeKind kind = from.kind();
  const std::int64_t ticks = isText(kind)     ? readText(from, to)
                             : isDate(kind)   ? from.integer()
                             : isBinary(kind) ? ticksOfBytes(from, to)
                                              : ticksOfNumber(from, to);
  if (to == TypeKind::datetime) return ticks;
  const std::int64_t rounded = roundToMinute(ticks);
  if (rounded < 0 || dayOf(rounded) > lastSmallDay) {
    if (isNumeric(kind) || isBinary(kind)) throwOverflow("smalldatetime");
    throwOutOfRange(isDate(kind) ? from.type.baseName() : from.textName(), to);
  }
  return rounded;
}

}  // namespace tsql::conversion
