// Stand-in for the per-line routines until they land: every line passes unchanged.
#include "LineOperation.h"

namespace morlevant {

namespace {

class Unchanged final : public LineOperation {
public:
    void wholeLine(std::string_view line, std::string& out) override { out.assign(line); }
    void inRanges(const LineColumns& line, std::string& out) override { out.assign(line.line()); }
    void rangesOut(const LineColumns& line, std::string& out) override { out.assign(line.line()); }
};

} // namespace

std::unique_ptr<LineOperation> makeCalculation(const TaskPageSettings&) {
    return std::make_unique<Unchanged>();
}
std::unique_ptr<LineOperation> makeReplacement(const TaskPageSettings&) {
    return std::make_unique<Unchanged>();
}
std::unique_ptr<LineOperation> makeFilter(const TaskPageSettings&, int) {
    return std::make_unique<Unchanged>();
}

} // namespace morlevant
