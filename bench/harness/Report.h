#pragma once

#include <optional>
#include <string>
#include <vector>

namespace bench {

/// The values of one quantity, one a run.
using Series = std::vector<double>;

[[nodiscard]] double median(Series values);

/// The least value that so large a share of all does not exceed.
[[nodiscard]] double percentile(Series values, double share);

/// One quantity, ours beside the bare program's where there is one.
struct Result {
    std::string name;
    std::string unit;
    std::optional<Series> bare;
    Series ours;
    /// For the ratio of the medians if there is a bare program, for our median if there is none. None: for information.
    std::optional<double> limit;

    [[nodiscard]] double measured() const;
    [[nodiscard]] bool isMissed() const { return limit && measured() > *limit; }
};

class Report {
public:
    void add(Result result) { results_.push_back(std::move(result)); }
    /// Something that must hold, and how it came out; empty means that it holds.
    void require(const std::string& what, const std::string& violation);

    [[nodiscard]] bool isMissed() const;
    [[nodiscard]] std::string markdown() const;

private:
    struct Fact {
        std::string what;
        std::string violation;
    };

    std::vector<Result> results_;
    std::vector<Fact> facts_;
};

} // namespace bench
