#include "engine/RunAlerts.h"

#include "taskdef/VisibleName.h"

namespace morlevant {

void RunAlerts::note(Kind kind) {
    Count& noted = counts_[index(kind)];
    ++noted.count;
    if (noted.places.size() < placesShown && file_ != nullptr)
        noted.places.emplace_back(*file_, row_);
}

void RunAlerts::take(RunAlerts& later) {
    for (std::size_t kind = 0; kind < 2; ++kind) {
        Count& noted = counts_[kind];
        Count& more = later.counts_[kind];
        noted.count += more.count;
        for (auto& place : more.places)
            if (noted.places.size() < placesShown)
                noted.places.push_back(std::move(place));
        more = Count();
    }
}

std::string RunAlerts::report() const {
    const char* what[] = {" held no number and counted as 0: ",
                          " ran past the width of the column range: "};
    const char* things[] = {" row", " result"};
    std::string text;
    for (std::size_t kind = 0; kind < 2; ++kind) {
        const Count& noted = counts_[kind];
        if (noted.count == 0)
            continue;
        if (!text.empty())
            text += "; ";
        text +=
            std::to_string(noted.count) + things[kind] + (noted.count == 1 ? "" : "s") + what[kind];
        for (std::size_t i = 0; i < noted.places.size(); ++i)
            text += (i ? ", " : "") + visibleName(noted.places[i].first) + " row " +
                    std::to_string(noted.places[i].second);
        if (noted.count > noted.places.size())
            text += ", …";
    }
    return text;
}

} // namespace morlevant
