// What the rows of the tables say, Perchly's and the bare one's.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>

namespace bench {

inline std::string titleOfRow(std::size_t row)
{
    static constexpr const char* subjects[] = { "Weather", "Recipes", "Timetable", "Library", "Museum", "Football",
        "Harbour", "Gardening", "Concerts", "Railways", "Physics", "Letters" };
    static constexpr const char* places[] = { "Geneva", "Oslo", "Valencia", "Cork", "Turin", "Ghent", "Porto" };
    constexpr auto seldom = 5000;
    return std::string(subjects[row % std::size(subjects)]) + " in " + places[row % std::size(places)] + " "
        + std::to_string(row) + (row % seldom == seldom - 1 ? " and Zagreb" : "");
}

inline std::string addressOfRow(std::size_t row)
{
    return "https://site-" + std::to_string(row) + ".example.org/articles/" + std::to_string(row % 97);
}

} // namespace bench
