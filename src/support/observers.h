// Change notification: whoever wants to be told keeps the subscription, and dropping it ends the telling.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace tarvik {

/// Ends its observation when destroyed. May outlive what it observes.
using Subscription = std::shared_ptr<void>;

/// One thread only. Observers may subscribe and unsubscribe while they are being told.
template <class... Args> class Observers {
public:
    using Observer = std::function<void(Args...)>;

    [[nodiscard]] Subscription add(Observer observer) {
        const int id = state_->nextId++;
        state_->observers.emplace(id, std::move(observer));
        return {nullptr, [weak = std::weak_ptr(state_), id](void*) {
                    if (const auto state = weak.lock())
                        state->observers.erase(id);
                }};
    }

    void notify(Args... args) const {
        const auto told = state_->observers;
        for (const auto& [id, observer] : told) {
            if (state_->observers.contains(id))
                observer(args...);
        }
    }

private:
    struct State {
        std::map<int, Observer> observers;
        int nextId = 0;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace tarvik
