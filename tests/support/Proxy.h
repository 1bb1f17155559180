#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <list>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/session/TemporaryFolder.h"

namespace FendaMaestros::tests {

/// Stands between clerks and a server, on a socket of its own: counts what passes, holds it up, and cuts a connection
/// in the middle of it. For one clerk at a time, who may have several connections.
class Proxy {
public:
    struct Traffic {
        /// Times that somebody asked the server and waited for its answer.
        int trips = 0;
        std::size_t bytes = 0;
        /// How many bytes had passed before each piece of it, of both directions.
        std::vector<std::size_t> pieces = {};
    };

    /// `server`: its socket.
    explicit Proxy(std::filesystem::path server) : server_(std::move(server)) {
        const auto own = address(folder_.path() / server_.filename());
        listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (bind(listener_, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 || listen(listener_, 16) != 0 ||
            pipe(stop_.data()) != 0)
            throw std::runtime_error("proxy");
        thread_ = std::thread([this] { serve(); });
    }
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;
    ~Proxy() {
        close(stop_[1]);
        thread_.join();
        for (const auto& link : links_) hangUp(link);
        close(stop_[0]);
        close(listener_);
    }

    /// What a connection string names as its host.
    std::filesystem::path host() const { return folder_.path(); }

    /// Begins to count anew. The connection that the byte behind so many others comes on is cut in front of it.
    void cutBehind(std::size_t bytes) { begin(bytes); }
    /// Begins to count anew, and cuts nothing.
    void letPass() { begin(never); }
    bool hasCut() const {
        const std::lock_guard lock(mutex_);
        return hasCut_;
    }
    Traffic traffic() const {
        const std::lock_guard lock(mutex_);
        return traffic_;
    }
    /// Of each trip.
    void setDelay(std::chrono::milliseconds delay) {
        const std::lock_guard lock(mutex_);
        delay_ = delay;
    }

private:
    static constexpr std::size_t never = static_cast<std::size_t>(-1);

    struct Link {
        int client, server;
        /// The client has asked, and the server has not answered yet.
        bool asked = false;
    };

    static sockaddr_un address(const std::filesystem::path& path) {
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        return address;
    }
    static void hangUp(const Link& link) {
        close(link.client);
        close(link.server);
    }

    void begin(std::size_t cutBehind) {
        const std::lock_guard lock(mutex_);
        traffic_ = {};
        cutBehind_ = cutBehind;
        hasCut_ = false;
    }

    void serve() {
        for (;;) {
            std::vector<pollfd> ends{{stop_[0], POLLIN, 0}, {listener_, POLLIN, 0}};
            for (const auto& link : links_) {
                ends.push_back({link.client, POLLIN, 0});
                ends.push_back({link.server, POLLIN, 0});
            }
            poll(ends.data(), ends.size(), -1);
            if (ends[0].revents != 0) return;
            auto end = ends.begin() + 2;
            for (auto link = links_.begin(); link != links_.end(); end += 2) {
                const bool open =
                    (end->revents == 0 || relay(*link, true)) && ((end + 1)->revents == 0 || relay(*link, false));
                if (!open) hangUp(*link);
                link = open ? std::next(link) : links_.erase(link);
            }
            if (ends[1].revents != 0) admit();
        }
    }

    void admit() {
        const Link link{accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC),
                        socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
        const auto there = address(server_);
        if (connect(link.server, reinterpret_cast<const sockaddr*>(&there), sizeof there) == 0)
            links_.push_back(link);
        else
            hangUp(link);
    }

    /// Hands on what has come from one side. False when the connection has ended, or is to end here.
    bool relay(Link& link, bool fromClient) {
        std::array<char, 65536> piece;
        const auto size = recv(fromClient ? link.client : link.server, piece.data(), piece.size(), 0);
        if (size <= 0) return false;
        const auto passing = count(static_cast<std::size_t>(size), fromClient && !link.asked);
        link.asked = fromClient;
        const auto sent = send(fromClient ? link.server : link.client, piece.data(), passing, MSG_NOSIGNAL);
        return sent == size;
    }

    /// Gives how many bytes of a piece may pass.
    std::size_t count(std::size_t size, bool beginsTrip) {
        std::unique_lock lock(mutex_);
        const auto passing = std::min(size, cutBehind_ - traffic_.bytes);
        traffic_.pieces.push_back(traffic_.bytes);
        traffic_.bytes += passing;
        traffic_.trips += beginsTrip;
        if (passing < size) {
            hasCut_ = true;
            cutBehind_ = never;
        }
        const auto delay = beginsTrip ? delay_ : std::chrono::milliseconds(0);
        lock.unlock();
        std::this_thread::sleep_for(delay);
        return passing;
    }

    TemporaryFolder folder_;
    std::filesystem::path server_;
    int listener_ = -1;
    std::array<int, 2> stop_{-1, -1};
    std::list<Link> links_;

    mutable std::mutex mutex_;
    Traffic traffic_;
    std::size_t cutBehind_ = never;
    bool hasCut_ = false;
    std::chrono::milliseconds delay_{0};

    std::thread thread_;
};

}  // namespace FendaMaestros::tests
