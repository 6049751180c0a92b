#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sim {

// What a finger or an `expect` is aimed at: a view found by its dump name
// (`#_timeDateLabel`), a view found by its class (`KVView`), either one
// narrowed to the N-th match in tree order (`@N`), or a point on the screen.
struct Target {
    enum class Kind : uint8_t { Name, Class, Point };
    Kind kind { Kind::Name };
    std::string name; // the view's name or class, for Name and Class
    std::optional<int> index; // the N of `@N`; absent means the first match
    double x { 0 };
    double y { 0 };

    bool operator==(const Target&) const = default;
    // The target as a scenario writes it.
    std::string toString() const;
};

std::optional<Target> parseTarget(std::string_view);

namespace ValueDescription {
inline constexpr std::string_view target = "a target like #name, ClassName, ClassName@2 or 120,300";
}

}
