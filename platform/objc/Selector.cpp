#include "Selector.h"

#include <memory>
#include <unordered_map>

namespace objc {

SEL sel_registerName(std::string_view name)
{
    // Selectors live for the whole process, like the runtime's own table.
    static auto* table = new std::unordered_map<std::string, std::unique_ptr<Selector>>();
    auto it = table->find(std::string(name));
    if (it != table->end())
        return it->second.get();
    auto selector = std::make_unique<Selector>(Selector { std::string(name) });
    SEL result = selector.get();
    table->emplace(std::string(name), std::move(selector));
    return result;
}

} // namespace objc
