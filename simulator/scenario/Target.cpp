#include "Target.h"

#include "ScenarioValues.h"


namespace sim {

namespace {

bool isClassNameCharacter(char c, bool first)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || (!first && c >= '0' && c <= '9');
}

}

std::string Target::toString() const
{
    if (kind == Kind::Point)
        return formatDecimal(x) + "," + formatDecimal(y);
    std::string text = kind == Kind::Name ? "#" + name : name;
    if (index)
        text += "@" + std::to_string(*index);
    return text;
}

std::optional<Target> parseTarget(std::string_view text)
{
    if (text.empty())
        return std::nullopt;

    if (text[0] != '#') {
        size_t comma = text.find(',');
        if (comma != std::string_view::npos) {
            auto x = parseDecimal(text.substr(0, comma));
            auto y = parseDecimal(text.substr(comma + 1));
            if (!x || !y)
                return std::nullopt;
            Target target;
            target.kind = Target::Kind::Point;
            target.x = *x;
            target.y = *y;
            return target;
        }
    }

    Target target;
    target.kind = text[0] == '#' ? Target::Kind::Name : Target::Kind::Class;
    std::string_view name = target.kind == Target::Kind::Name ? text.substr(1) : text;
    size_t at = name.rfind('@');
    if (at != std::string_view::npos) {
        std::optional<int64_t> index = parseInteger(name.substr(at + 1));
        if (!index || *index < 0 || *index > 1'000'000 || name[at + 1] == '-')
            return std::nullopt;
        target.index = static_cast<int>(*index);
        name = name.substr(0, at);
    }
    if (name.empty())
        return std::nullopt;
    if (target.kind == Target::Kind::Class) {
        for (size_t i = 0; i < name.size(); ++i) {
            if (!isClassNameCharacter(name[i], i == 0))
                return std::nullopt;
        }
    }
    target.name = std::string(name);
    return target;
}

}
