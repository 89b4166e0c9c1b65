#include "engine/run/FileSchedule.h"

#include <map>

namespace morlevant {

FileSchedule::FileSchedule(const std::vector<std::string>& places,
                           const std::vector<std::optional<FileIdentity>>& identities)
    : after_(places.size()), state_(places.size(), State::Waiting) {
    std::map<std::string, std::size_t> lastOfPlace;
    std::map<FileIdentity, std::size_t> lastOfFile;
    for (std::size_t file = 0; file < places.size(); ++file) {
        if (const auto [earlier, first] = lastOfPlace.try_emplace(places[file], file); !first) {
            after_[file].push_back(earlier->second);
            earlier->second = file;
        }
        if (!identities[file])
            continue;
        if (const auto [earlier, first] = lastOfFile.try_emplace(*identities[file], file); !first) {
            after_[file].push_back(earlier->second);
            earlier->second = file;
        }
    }
}

bool FileSchedule::free(std::size_t file) const {
    if (state_[file] != State::Waiting)
        return false;
    for (const std::size_t earlier : after_[file])
        if (state_[earlier] != State::Finished)
            return false;
    return true;
}

std::optional<std::size_t> FileSchedule::take() {
    for (std::size_t file = firstWaiting_; file < state_.size(); ++file) {
        if (!free(file))
            continue;
        state_[file] = State::Taken;
        while (firstWaiting_ < state_.size() && state_[firstWaiting_] != State::Waiting)
            ++firstWaiting_;
        return file;
    }
    return std::nullopt;
}

void FileSchedule::finish(std::size_t file) {
    state_[file] = State::Finished;
}

} // namespace morlevant
