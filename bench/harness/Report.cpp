#include "Report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace bench {
namespace {

std::string formatted(const char* format, double value)
{
    std::array<char, 64> text {};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string spread(const Series& values)
{
    if (values.size() == 1)
        return formatted("%.1f", values.front());
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    return formatted("%.1f", median(values)) + " (" + formatted("%.1f", *least) + " to " + formatted("%.1f", *most)
        + ")";
}

std::string row(const Result& result)
{
    const auto verdict = !result.limit ? "" : result.isMissed() ? "**missed**" : "met";
    return "| " + result.name + " | " + result.unit + " | " + (result.bare ? spread(*result.bare) : "") + " | "
        + spread(result.ours) + " | " + (result.bare ? formatted("%.2f", result.measured()) : "") + " | "
        + (result.limit ? formatted(result.bare ? "%.2f times" : "%.1f", *result.limit) : "") + " | " + verdict
        + " |\n";
}

} // namespace

double median(Series values)
{
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double percentile(Series values, double share)
{
    std::sort(values.begin(), values.end());
    const auto rank = std::ceil(share * static_cast<double>(values.size()));
    return values.at(static_cast<std::size_t>(rank) - 1);
}

double Result::measured() const
{
    return bare ? median(ours) / median(*bare) : median(ours);
}

void Report::require(const std::string& what, const std::string& violation)
{
    facts_.push_back({ what, violation });
}

bool Report::isMissed() const
{
    return std::any_of(results_.begin(), results_.end(), [](auto& result) { return result.isMissed(); })
        || std::any_of(facts_.begin(), facts_.end(), [](auto& fact) { return !fact.violation.empty(); });
}

std::string Report::markdown() const
{
    std::string text;
    if (!results_.empty())
        text += "| What | Unit | Bare: median (range) | Perchly: median (range) | Ratio | Limit | |\n"
                "| --- | --- | --- | --- | --- | --- | --- |\n";
    for (const auto& result : results_)
        text += row(result);
    if (!facts_.empty())
        text += "\n";
    for (const auto& fact : facts_)
        text += "- " + fact.what + ": " + (fact.violation.empty() ? "holds" : "**broken** (" + fact.violation + ")")
            + "\n";
    return text;
}

} // namespace bench
