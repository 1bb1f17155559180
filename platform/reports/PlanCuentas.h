#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/BandedReport.h"

namespace FendaMaestros {

/// One column of a chart listing.
struct ReportColumn {
    const char* heading;
    const char* field;
    /// 0: all that the others leave; one column of each listing.
    Twips width;
};

/// What tells one chart listing from another.
struct ReportDesign {
    const char* name;
    const char* title;
    bool landscape;
    bool hasBalance;
    int points;
    std::vector<ReportColumn> columns;
};

/// Null for a name that no listing has.
const ReportDesign* findDesign(std::string_view name);

/// What heads a chart listing.
struct ReportHeading {
    std::string company;
    std::string selection;
};

/// The chart of accounts, one line for each account: with `balances`, and in the designs that have them, also the
/// balance of each and the total of all at the end.
class PlanCuentas final : public BandedReport {
public:
    PlanCuentas(const ReportDesign& design, const ReportHeading& heading, bool balances,
                std::shared_ptr<Recordset> rows);

private:
    void buildHeading(const ReportDesign& design, const ReportHeading& heading);
    void addColumn(const ReportColumn& column, Twips left, int points);
    void addBalance(const Recordset& rows, int points);

    Twips printWidth_ = 0;
};

}  // namespace FendaMaestros
