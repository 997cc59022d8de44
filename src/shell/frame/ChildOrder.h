#pragma once
#include <algorithm>
#include <vector>

namespace nib {

/// The child windows from front to back. Stepping on sends the front one to the back and stepping back undoes that, so
/// that a round visits every window.
template <typename Child>
class ChildOrder {
public:
    /// Comes to the front, as a click brings it.
    void ToFront(Child* child)
    {
        Remove(child);
        order_.insert(order_.begin(), child);
    }
    void Remove(Child* child) { std::erase(order_, child); }
    Child* Front() const { return order_.empty() ? nullptr : order_.front(); }
    const std::vector<Child*>& All() const { return order_; }
    /// The child that is now in front; null when there is none.
    Child* Step(bool backward)
    {
        if (order_.size() > 1) {
            auto turn = backward ? order_.end() - 1 : order_.begin() + 1;
            std::rotate(order_.begin(), turn, order_.end());
        }
        return Front();
    }

private:
    std::vector<Child*> order_;
};

} // namespace nib
