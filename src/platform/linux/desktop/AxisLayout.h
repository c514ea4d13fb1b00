#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace desktop {

/// Solves the constraints of a container and its views along one axis. Positions count from the container's start;
/// the container itself is view 0.
///
/// Each constraint is an equation between two edges or lengths, so everything follows from the container's length by
/// putting in what is known, one equation after the other. A view whose length follows from no equation gets its
/// natural one, a view whose place does not, the container's start. Where equations contradict each other, the earlier
/// one holds.
class AxisLayout {
public:
    enum class Attribute { Start, End, Center, Length };

    struct Anchor {
        std::size_t view = 0;
        Attribute attribute = Attribute::Start;
    };

    /// first = second + constant, or first = constant.
    struct Equation {
        Anchor first;
        std::optional<Anchor> second;
        double constant = 0;
    };

    /// What a view asks for itself.
    struct Lengths {
        double minimum = 0;
        double natural = 0;
        bool operator==(const Lengths&) const = default;
    };

    struct Span {
        double start = 0;
        double length = 0;
        bool operator==(const Span&) const = default;
    };

    /// `views` has the lengths of views 1, 2, ...
    AxisLayout(const std::vector<Equation>& equations, const std::vector<Lengths>& views);

    /// The spans of views 1, 2, ...; no length is negative.
    [[nodiscard]] std::vector<Span> place(double containerLength) const;

    /// What the container needs to hold all views at their minimum or natural length.
    [[nodiscard]] Lengths containerLengths() const;

private:
    /// A place or length as it depends on the container's length.
    struct Value {
        double share = 0;
        double constant = 0;

        [[nodiscard]] double at(double containerLength) const { return share * containerLength + constant; }
        Value operator+(const Value& other) const { return { share + other.share, constant + other.constant }; }
        Value operator-(const Value& other) const { return { share - other.share, constant - other.constant }; }
        Value operator*(double factor) const { return { share * factor, constant * factor }; }
    };

    struct View {
        std::optional<Value> values[4];

        [[nodiscard]] std::optional<Value>& operator[](Attribute attribute)
        {
            return values[static_cast<std::size_t>(attribute)];
        }
        [[nodiscard]] const Value& known(Attribute attribute) const
        {
            return *values[static_cast<std::size_t>(attribute)];
        }
    };

    void propagate(const std::vector<Equation>& equations);
    [[nodiscard]] bool assume();
    static void complete(View& view);
    [[nodiscard]] double neededFor(double Lengths::*length) const;

    std::vector<View> views_;
    std::vector<Lengths> lengths_;
};

} // namespace desktop
