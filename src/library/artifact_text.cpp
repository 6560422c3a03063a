#include "library/artifact_text.h"

#include "library/type_appearance.h"

#include <array>
#include <cstdio>
#include <memory>
#include <sys/stat.h>
#include <unicode/calendar.h>
#include <unicode/reldatefmt.h>
#include <unicode/unistr.h>

namespace kelmo {

std::string fileSizeString(std::uint64_t bytes) {
    char text[64];
    if (bytes >= 1024)
        std::snprintf(text, sizeof text, "%.1f KB", static_cast<double>(bytes) / 1024.0);
    else
        std::snprintf(text, sizeof text, "%llu B", static_cast<unsigned long long>(bytes));
    return text;
}

std::uint64_t fileSizeOrZero(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        return 0;
    return static_cast<std::uint64_t>(info.st_size);
}

std::string relativeDateString(Clock::time_point date, Clock::time_point now) {
    const auto toUDate = [](Clock::time_point time) {
        return static_cast<UDate>(
            std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count());
    };
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar{icu::Calendar::createInstance(status)};
    icu::RelativeDateTimeFormatter formatter{icu::Locale::getDefault(), nullptr, UDAT_STYLE_SHORT,
                                             UDISPCTX_CAPITALIZATION_NONE, status};
    if (U_FAILURE(status))
        return {};
    calendar->setTime(toUDate(now), status);

    // Walks from now towards the date unit by unit, as calendar differences do.
    struct Unit {
        UCalendarDateFields field;
        URelativeDateTimeUnit relativeUnit;
    };
    static constexpr std::array<Unit, 7> units{{
        {UCAL_YEAR, UDAT_REL_UNIT_YEAR},
        {UCAL_MONTH, UDAT_REL_UNIT_MONTH},
        {UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK},
        {UCAL_DATE, UDAT_REL_UNIT_DAY},
        {UCAL_HOUR_OF_DAY, UDAT_REL_UNIT_HOUR},
        {UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
        {UCAL_SECOND, UDAT_REL_UNIT_SECOND},
    }};
    double offset = 0;
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
    for (const auto& candidate : units) {
        const int32_t difference =
            calendar->fieldDifference(toUDate(date), candidate.field, status);
        if (U_FAILURE(status))
            return {};
        if (difference != 0) {
            offset = difference;
            unit = candidate.relativeUnit;
            break;
        }
    }
    icu::UnicodeString text;
    formatter.formatNumeric(offset, unit, text, status);
    if (U_FAILURE(status))
        return {};
    std::string result;
    text.toUTF8String(result);
    return result;
}

std::string fileCountString(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " file" : " files");
}

std::string itemSummary(const Artifact& artifact, const std::string& age) {
    return artifact.name + ", " + std::string{typeAppearance(artifact.type.kind).badgeText} +
           ", modified " + age;
}

} // namespace kelmo
