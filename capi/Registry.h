#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "capi/Status.h"

/// What handles stand for.
namespace FendaMaestros::capi {

/// Something that a host has a handle of.
class Thing {
public:
    enum class Kind : std::uint8_t { Desktop, Session, Object, Form, Rows };

    explicit Thing(Kind kind) : kind_(kind) {}
    Thing(const Thing&) = delete;
    Thing& operator=(const Thing&) = delete;
    virtual ~Thing() = default;

    Kind kind() const { return kind_; }

private:
    Kind kind_;
};

/// The things that live and the one thread that they belong to. A handle is a number that never comes back: the place
/// of its thing in a list, and above it a count of all handles ever given. Holds no memory while nothing lives.
class Registry {
public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    /// What hosts have left open ends with the process: whom its end would be told may be gone already.
    ~Registry() {
        for (Slot& slot : slots_) static_cast<void>(slot.thing.release());
    }

    /// One for all hosts of the process.
    static Registry& instance() { return instance_; }

    /// Throws Refusal unless this thread may work with handles, which it may from then on. To be called before anything
    /// is made; what fails afterwards calls release().
    void claim();
    /// Lets any thread begin anew when nothing lives.
    void release() noexcept;
    /// The handle of something new; its thread has been claimed.
    void* add(std::unique_ptr<Thing> thing);
    /// Ends a handle and its thing; any thread may begin anew when it was the last. Nothing for one that is not there.
    void close(void* handle) noexcept;

    /// The thing of a handle; throws Refusal (FENDA_WRONG_THREAD, FENDA_BAD_HANDLE, FENDA_NESTED). `T::kindOfThing`
    /// says what it must be.
    template <class T>
    T& find(const void* handle) {
        Thing& found = check(find(handle, T::kindOfThing));
        if (nested_) [[unlikely]]
            refuseNested();
        return static_cast<T&>(found);
    }
    /// The same, also from within a callback of a connection.
    template <class T>
    T& findNested(const void* handle) {
        return static_cast<T&>(check(find(handle, T::kindOfThing)));
    }

    /// Lives as long as a connection of a host is asked.
    class Nesting {
    public:
        Nesting() { ++instance().nested_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --instance().nested_; }
    };

private:
    struct Slot {
        std::uintptr_t handle = 0;
        std::unique_ptr<Thing> thing;
    };

    /// Bits of a handle that say its slot.
    static constexpr unsigned slotBits = sizeof(std::uintptr_t) > 4 ? 20 : 12;
    static constexpr std::uintptr_t slotMask = (std::uintptr_t{1} << slotBits) - 1;

    /// Null when there is none such on this thread.
    Thing* find(const void* handle, Thing::Kind kind) const {
        if (owner_.load(std::memory_order_relaxed) != std::this_thread::get_id()) [[unlikely]]
            return nullptr;
        const auto number = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t slot = number & slotMask;
        if (slot >= slots_.size() || slots_[slot].handle != number) [[unlikely]]
            return nullptr;
        Thing* const thing = slots_[slot].thing.get();
        return thing && thing->kind() == kind ? thing : nullptr;
    }
    Thing& check(Thing* found) const {
        if (!found) [[unlikely]]
            refuseHandle();
        return *found;
    }
    [[noreturn]] void refuseHandle() const;
    [[noreturn]] static void refuseNested();

    static Registry instance_;

    std::atomic<std::thread::id> owner_{};
    std::vector<Slot> slots_;
    std::vector<std::size_t> free_;
    std::uintptr_t given_ = 0;
    int living_ = 0;
    int nested_ = 0;
};

/// Carries out a call; what it throws becomes a status.
template <class Work>
fenda_status guarded(Work&& work) noexcept {
    try {
        work();
        return FENDA_OK;
    } catch (...) {
        return failWithCurrentException();
    }
}

/// Makes a thing with `make`, which gives a std::unique_ptr, and its handle in `place`.
template <class Handle, class Make>
fenda_status guardedMaking(Handle** place, Make&& make) noexcept {
    Registry& registry = Registry::instance();
    return guarded([&] {
        if (!place) refuseArgument("Falta dónde dejar el resultado.");
        registry.claim();
        try {
            *place = static_cast<Handle*>(registry.add(make()));
        } catch (...) {
            registry.release();
            throw;
        }
    });
}

}  // namespace FendaMaestros::capi
