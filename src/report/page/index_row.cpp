#include "report/page/index_row.h"

#include "report/page/words.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace desk::page {

namespace {

template <class Number>
std::uint16_t small(Number value) {
    constexpr double largest = std::numeric_limits<std::uint16_t>::max();
    return static_cast<std::uint16_t>(std::lround(std::clamp(static_cast<double>(value), 0.0, largest)));
}

} // namespace

index_row row_of(const page_source& source, std::string page) {
    const facts::display_facts& facts = source.facts;
    index_row row;
    row.page = std::move(page);
    row.model = model_words(facts);
    row.maker = facts.maker;
    row.maker_name = facts.maker_name;
    if (const facts::video_mode* best = best_mode(facts)) {
        row.width = best->width;
        row.height = best->height;
        row.interlaced = best->interlaced;
        constexpr double highest_hz = 4e6;
        row.rate_mhz = static_cast<std::uint32_t>(std::lround(1000 * std::clamp(best->refresh_hz, 0.0, highest_hz)));
    }
    if (const auto size = size_of_image(facts)) row.diagonal = small(10 * diagonal_inches(*size));
    row.year = small(facts.year.value_or(0));
    const finding_counts counts = count_findings(facts);
    row.errors = small(counts.errors);
    row.warnings = small(counts.warnings);
    row.notes = small(counts.notes);
    row.hdr = has_hdr(facts);
    row.desk_fails = source.desk.failure.has_value();
    row.failure = small(source.desk.failure.value_or(0));
    return row;
}

} // namespace desk::page
