#pragma once

#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/session/TemporaryFolder.h"

namespace FendaMaestros::tests {

/// A PostgreSQL server of the tests' own, in a temporary folder and on a socket there, which ends with this object or,
/// at the latest, with this process. It runs as an unprivileged user where the tests run as root.
class PostgresServer {
public:
    /// Whether PostgreSQL is installed here.
    static bool installed() { return !programs().empty(); }

    /// Whether what is saved has reached the disk. Only when the machine dies does it matter.
    enum class Disk { NotAwaited, Awaited };

    /// Throws std::runtime_error when the server does not start.
    explicit PostgresServer(Disk disk = Disk::NotAwaited) : disk_(disk) {
        if (isRoot() && chown(folder_.path().c_str(), user()->pw_uid, user()->pw_gid) != 0)
            throw std::runtime_error("chown");
        run({"initdb", "-D", data(), "-U", "postgres", "-A", "trust", "-E", "UTF8", "--locale=C", "-N"});
        start();
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;
    ~PostgresServer() { stop(SIGINT); }

    void start() {
        for (int i = 0; i < 600; ++i) {
            // It ends at once while processes of the one before are on their way out.
            if (process_ <= 0 || waitpid(process_, nullptr, WNOHANG) == process_)
                process_ = spawn({"postgres", "-D", data(), "-k", folder_.path().string(), "-h", "", "-c",
                                  disk_ == Disk::Awaited ? "fsync=on" : "fsync=off", "-c", "max_connections=60", "-c",
                                  "shared_buffers=32MB"});
            if (answers()) return;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        throw std::runtime_error("postgres: " + said());
    }
    /// SIGINT: connections are ended and all is written; SIGKILL: as when the machine dies.
    void stop(int signal) {
        if (process_ <= 0) return;
        if (signal == SIGKILL) {
            kill(process_, SIGSTOP);
            for (const pid_t part : parts()) kill(part, SIGKILL);
        }
        kill(process_, signal);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }

    std::filesystem::path socket() const { return folder_.path() / ".s.PGSQL.5432"; }
    /// A connection string to a database.
    std::string connection(const std::string& database) const {
        return "host=" + folder_.path().string() + " user=postgres dbname=" + database;
    }
    /// A new database, the copy of another one that nobody is connected to; gives its connection string.
    std::string create(const std::string& database, const std::string& like = "template0") const {
        execute("postgres", {"CREATE DATABASE " + database + " TEMPLATE " + like});
        return connection(database);
    }
    /// Commands, each on its own.
    void execute(const std::string& database, const std::vector<std::string>& commands) const {
        std::vector<std::string> psql{"psql", "-qX", "-v", "ON_ERROR_STOP=1", "-d", connection(database)};
        for (const auto& command : commands) psql.insert(psql.end(), {"-c", command});
        run(psql);
    }

private:
    static bool isRoot() { return geteuid() == 0; }
    static const passwd* user() { return getpwnam("nobody"); }
    std::string data() const { return folder_.path() / "datos"; }

    /// The folder of the newest version's programs; empty when there is none.
    static std::filesystem::path programs() {
        std::filesystem::path newest;
        std::error_code none;
        for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", none))
            if (exists(version.path() / "bin/initdb") && version.path() > newest) newest = version.path();
        return newest.empty() ? newest : newest / "bin";
    }

    /// The processes of the server besides the one that started them.
    std::vector<pid_t> parts() const {
        const auto process = std::to_string(process_);
        std::ifstream children("/proc/" + process + "/task/" + process + "/children");
        return {std::istream_iterator<pid_t>(children), {}};
    }

    bool answers() const { return status({"pg_isready", "-q", "-h", folder_.path().string()}) == 0; }

    void run(const std::vector<std::string>& command) const {
        if (status(command) != 0) throw std::runtime_error(command.front() + ": " + said());
    }
    int status(const std::vector<std::string>& command) const {
        int status = -1;
        waitpid(spawn(command), &status, 0);
        return status;
    }
    /// What the last program has said.
    std::string said() const {
        std::ifstream file(log());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::filesystem::path log() const { return folder_.path() / "mensajes"; }

    pid_t spawn(const std::vector<std::string>& command) const {
        const auto program = (programs() / command.front()).string();
        // By its path, where it looks for the other programs.
        std::vector<char*> arguments{const_cast<char*>(program.c_str())};
        for (std::size_t word = 1; word < command.size(); ++word)
            arguments.push_back(const_cast<char*>(command[word].c_str()));
        arguments.push_back(nullptr);
        const auto messages = log().string();
        const auto* unprivileged = isRoot() ? user() : nullptr;
        const pid_t child = fork();
        if (child != 0) return child;
        if (unprivileged && (setgid(unprivileged->pw_gid) != 0 || setuid(unprivileged->pw_uid) != 0)) _exit(126);
        prctl(PR_SET_PDEATHSIG, SIGINT);
        const int file = open(messages.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (file < 0 || dup2(file, STDOUT_FILENO) < 0 || dup2(file, STDERR_FILENO) < 0 || chdir("/") != 0) _exit(126);
        execv(program.c_str(), arguments.data());
        _exit(127);
    }

    Disk disk_;
    TemporaryFolder folder_;
    pid_t process_ = 0;
};

}  // namespace FendaMaestros::tests
