#include "engine/pages/FilePage.h"

#include "engine/pages/ColumnDividePage.h"
#include "engine/pages/InsertPage.h"
#include "engine/pages/LinePage.h"
#include "engine/pages/MergePage.h"
#include "engine/pages/RangeDividePage.h"
#include "engine/pages/RowDividePage.h"
#include "engine/routines/Calculation.h"
#include "engine/routines/Filter.h"
#include "engine/routines/Replacement.h"

namespace morlevant {

namespace {

// Line 19: "1" to "3" insert, "4" to "6" filter kinds 1 to 3.
std::unique_ptr<FilePage> insertOrFilterPage(const RunContext& context) {
    const std::string& action = context.settings.insertAction;
    if (action == "1" || action == "2" || action == "3")
        return std::make_unique<InsertPage>(context, action[0] - '0');
    if (action == "4" || action == "5" || action == "6")
        return std::make_unique<LinePage>(context, makeFilter(context.settings, action[0] - '3'));
    return nullptr;
}

// Line 26. Dividing by column exists whole-text and with the ranges taken out; dividing by
// range-row and range-column only with the ranges taken out.
std::unique_ptr<FilePage> divideOrMergePage(const RunContext& context) {
    const std::string& action = context.settings.divideAction;
    const bool rangesOut = context.mode == RangeMode::RangesOut;
    if (action == "1")
        return std::make_unique<RowDividePage>(context);
    if (action == "2" && context.mode != RangeMode::InPlace)
        return std::make_unique<ColumnDividePage>(context);
    if ((action == "3" || action == "4") && rangesOut)
        return std::make_unique<RangeDividePage>(context, action == "3");
    if (action == "5")
        return std::make_unique<MergePage>(context);
    return nullptr;
}

} // namespace

std::unique_ptr<FilePage> makeFilePage(const RunContext& context) {
    const std::string& page = context.settings.operationPage;
    if (page == "3")
        return std::make_unique<LinePage>(context, makeCalculation(context.settings));
    if (page == "4")
        return std::make_unique<LinePage>(context, makeReplacement(context.settings));
    if (page == "5")
        return insertOrFilterPage(context);
    if (page == "6")
        return divideOrMergePage(context);
    return nullptr;
}

} // namespace morlevant
