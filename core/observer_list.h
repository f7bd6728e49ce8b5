// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace wib {

// Keeps a subscription alive; dropping it unsubscribes. Holders that outlive
// the list they subscribed to are safe: the list's end is noticed.
class Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        if (cancel_) {
            std::exchange(cancel_, nullptr)();
        }
    }

  private:
    std::function<void()> cancel_;
};

// Any number of listeners to one kind of change, told in the order they
// subscribed. A listener may unsubscribe (itself or another) while told.
template <typename... Args>
class ObserverList {
  public:
    using Listener = std::function<void(Args...)>;

    ObserverList() : entries_(std::make_shared<Entries>()) {}
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;

    [[nodiscard]] Subscription subscribe(Listener listener) {
        const int key = nextKey_++;
        entries_->emplace(key, std::move(listener));
        std::weak_ptr<Entries> weak = entries_;
        return Subscription([weak, key] {
            if (const auto entries = weak.lock()) {
                entries->erase(key);
            }
        });
    }

    void notify(Args... args) const {
        // Walk by key, so that a listener that unsubscribes does not upset the walk.
        for (auto it = entries_->begin(); it != entries_->end();) {
            const int key = it->first;
            const Listener listener = it->second;
            listener(args...);
            it = entries_->upper_bound(key);
        }
    }

    bool empty() const { return entries_->empty(); }

  private:
    using Entries = std::map<int, Listener>;
    std::shared_ptr<Entries> entries_;
    int nextKey_ = 0;
};

}  // namespace wib
