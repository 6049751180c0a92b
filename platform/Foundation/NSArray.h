#pragma once

#include <objc/objc.h>

#include <vector>

// An ordered list of objects (null entries are allowed here, unlike Foundation,
// so that host data with holes can be described as it is).
class NSArray final : public NSObject {
    OBJC_CLASS(NSArray)
public:
    NSArray() = default;
    explicit NSArray(std::vector<StrongId> objects)
        : m_objects(std::move(objects))
    {
    }
    static RefPtr<NSArray> create(std::vector<StrongId> objects = {}) { return make<NSArray>(std::move(objects)); }

    size_t count() const { return m_objects.size(); }
    // Null when the index is out of range.
    StrongId objectAtIndex(size_t index) const { return index < m_objects.size() ? m_objects[index] : nullptr; }
    const std::vector<StrongId>& objects() const { return m_objects; }
    std::vector<StrongId>& mutableObjects() { return m_objects; }
    void addObject(StrongId object) { m_objects.push_back(std::move(object)); }

private:
    std::vector<StrongId> m_objects;
};
