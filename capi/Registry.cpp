#include "capi/Registry.h"

#include <chrono>

namespace FendaMaestros::capi {

namespace {

constexpr const char* wrongThread = "La biblioteca se está usando desde otro hilo.";
constexpr const char* nested = "La biblioteca no se puede llamar desde una función de la conexión.";

}  // namespace

Registry Registry::instance_;

void Registry::claim() {
    const auto self = std::this_thread::get_id();
    auto owner = std::thread::id();
    if (!owner_.compare_exchange_strong(owner, self) && owner != self) refuse(FENDA_WRONG_THREAD, wrongThread);
    if (nested_) refuseNested();
}

void Registry::release() noexcept {
    if (living_ > 0) return;
    slots_ = std::vector<Slot>();
    free_ = std::vector<std::size_t>();
    owner_.store(std::thread::id());
}

void* Registry::add(std::unique_ptr<Thing> thing) {
    // A library that is loaded anew begins elsewhere.
    if (given_ == 0)
        given_ = static_cast<std::uintptr_t>(std::chrono::steady_clock::now().time_since_epoch().count() / 1000);
    if (free_.empty()) {
        if (slots_.size() > slotMask) refuse(FENDA_OUT_OF_MEMORY, "Hay demasiadas cosas abiertas.");
        slots_.emplace_back();
        free_.reserve(slots_.size());
        free_.push_back(slots_.size() - 1);
    }
    const std::size_t slot = free_.back();
    const std::uintptr_t handle = (++given_ << slotBits) | slot;
    free_.pop_back();
    slots_[slot] = {handle, std::move(thing)};
    ++living_;
    return reinterpret_cast<void*>(handle);
}

void Registry::close(void* handle) noexcept {
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    const std::size_t slot = number & slotMask;
    if (slot >= slots_.size() || slots_[slot].handle != number) return;
    // Whoever is told of the end may make something new, and the end is told on this thread.
    std::unique_ptr<Thing> ending = std::exchange(slots_[slot], {}).thing;
    ending.reset();
    free_.push_back(slot);
    --living_;
    release();
}

void Registry::refuseHandle() const {
    const auto owner = owner_.load();
    if (owner != std::thread::id() && owner != std::this_thread::get_id()) refuse(FENDA_WRONG_THREAD, wrongThread);
    refuse(FENDA_BAD_HANDLE, "El manejador no existe, está cerrado o es de otra cosa.");
}

void Registry::refuseNested() { refuse(FENDA_NESTED, nested); }

}  // namespace FendaMaestros::capi
