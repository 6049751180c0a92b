#include "HostShared.h"

#include <vector>

namespace host {

static std::vector<std::function<void()>>& forgetters()
{
    static auto* list = new std::vector<std::function<void()>>();
    return *list;
}

void onForgetSharedInstances(std::function<void()> forget) { forgetters().push_back(std::move(forget)); }

void forgetSharedInstances()
{
    auto list = std::move(forgetters());
    forgetters().clear();
    for (auto& forget : list)
        forget();
}

} // namespace host
