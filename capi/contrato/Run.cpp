#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <utility>

#include "capi/Structures.h"
#include "capi/Texts.h"
#include "capi/contrato/HostBackend.h"

using namespace FendaMaestros;

namespace {

/// Tells the host how each case has ended, in lines.
class Reporter final : public testing::EmptyTestEventListener {
public:
    explicit Reporter(const fenda_contract_host& host) : host_(host) {}

    int failed = 0;

    void OnTestPartResult(const testing::TestPartResult& part) override {
        if (part.failed()) reasons_ += std::string(part.message()) + "\n";
    }
    void OnTestEnd(const testing::TestInfo& test) override {
        const testing::TestResult& result = *test.result();
        const std::string name = std::string(test.test_suite_name()) + "." + test.name();
        ++tried_;
        failed += result.Failed();
        tell((result.Failed()    ? "FALLA   "
              : result.Skipped() ? "OMITIDA "
                                 : "BIEN    ") +
             name.substr(0, name.find('/')));
        std::istringstream lines(std::exchange(reasons_, {}));
        for (std::string line; std::getline(lines, line);) tell("        " + line);
    }
    void OnTestProgramEnd(const testing::UnitTest&) override {
        tell(std::to_string(tried_ - failed) + " de " + std::to_string(tried_) + " casos no fallan");
    }

private:
    void tell(const std::string& line) const {
        if (host_.report)
            host_.report(host_.context, line.c_str());
        else
            std::cout << line << std::endl;
    }

    const fenda_contract_host& host_;
    std::string reasons_;
    int tried_ = 0;
};

/// Once for the process: the cases are there from then on.
void prepare() {
    static const bool prepared = [] {
        int count = 1;
        char name[] = "fenda-contrato";
        char* arguments[] = {name, nullptr};
        testing::InitGoogleTest(&count, arguments);
        auto& listeners = testing::UnitTest::GetInstance()->listeners();
        delete listeners.Release(listeners.default_result_printer());
        return true;
    }();
    static_cast<void>(prepared);
}

int run(const fenda_contract_host& host, std::string_view filter) {
    prepare();
    testing::GTEST_FLAG(filter) = filter.empty() ? "*" : std::string(filter);
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    Reporter reporter(host);
    listeners.Append(&reporter);
    tests::tryHost(&host);
    const bool kept = RUN_ALL_TESTS() == 0;
    tests::tryHost(nullptr);
    listeners.Release(&reporter);
    return kept ? 0 : std::max(reporter.failed, 1);
}

}  // namespace

int32_t fenda_contract_run(const fenda_contract_host* host, const char* filter) {
    try {
        const fenda_contract_host tried = capi::takenStructure(host);
        if (!tried.empty_company) capi::refuseArgument("Falta una función del anfitrión.");
        return run(tried, capi::takenOrNone(filter));
    } catch (...) {
        capi::failWithCurrentException();
        return -1;
    }
}
