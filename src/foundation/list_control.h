// What the fill operations need of "a list box": the wizard adapts a combo box to it, tests
// and the unattended front end use a plain vector.
#pragma once

#include <string>
#include <vector>

class ListControl {
public:
    virtual ~ListControl() = default;
    virtual void Clear() = 0;
    virtual void AddItem(const std::string& text) = 0;
};

class VectorList final : public ListControl {
public:
    void Clear() override { items.clear(); }
    void AddItem(const std::string& text) override { items.push_back(text); }

    std::vector<std::string> items;
};
