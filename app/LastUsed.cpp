#include "app/LastUsed.h"

#include <utility>

namespace FendaMaestros {

namespace {

constexpr const char *folderWord = "carpeta", *serverWord = "servidor";

/// Kind, place and company, a tab between them: names of companies have none.
std::string lineOf(const UsedCompany& used) {
    const bool onServer = used.place.kind == Place::Kind::Server;
    return std::string(onServer ? serverWord : folderWord) + "\t" + used.place.where + "\t" + used.company;
}

/// Without a company when the line says nothing.
UsedCompany read(const std::string& line) {
    const std::size_t first = line.find('\t'), last = line.rfind('\t');
    const std::string kind = line.substr(0, first);
    if (first == last || (kind != folderWord && kind != serverWord)) return {};
    return {{kind == serverWord ? Place::Kind::Server : Place::Kind::Folder, line.substr(first + 1, last - first - 1)},
            line.substr(last + 1)};
}

}  // namespace

std::string UsedCompany::text() const { return company + " — " + place.where; }

LastUsed::LastUsed(const std::vector<std::string>& lines, Keep keep) : keep_(std::move(keep)) {
    for (const std::string& line : lines)
        if (UsedCompany used = read(line); !used.company.empty() && !used.place.where.empty())
            all_.push_back(std::move(used));
}

void LastUsed::use(const UsedCompany& used) {
    const UsedCompany kept{withoutSecrets(used.place), used.company};
    if (kept.place.where.empty()) return;
    std::erase(all_, kept);
    all_.insert(all_.begin(), kept);
    if (all_.size() > most) all_.resize(most);
    if (!keep_) return;
    std::vector<std::string> lines;
    for (const UsedCompany& each : all_) lines.push_back(lineOf(each));
    keep_(lines);
}

}  // namespace FendaMaestros
