#pragma once

#include <QString>

namespace FendaMaestros::qt {

/// Keeps the windowing library from complaining in its own words for as long as it lives.
class Silence {
public:
    Silence() : previous_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { qInstallMessageHandler(previous_); }

private:
    QtMessageHandler previous_;
};

}  // namespace FendaMaestros::qt
