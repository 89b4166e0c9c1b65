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

std::unique_ptr<FilePage> insertOrFilterPage(const RunContext& context, InsertFilterAction action) {
    const auto filterPage = [&context](int kind) {
        return std::make_unique<LinePage>(context, [&context, kind](RunAlerts*) {
            return makeFilter(context.settings, context.columnRanges, kind);
        });
    };
    switch (action) {
    case InsertFilterAction::InsertDateTime:
    case InsertFilterAction::InsertString:
    case InsertFilterAction::InsertTextFile:
        return std::make_unique<InsertPage>(context, action);
    case InsertFilterAction::FilterAndReplace:
        return filterPage(1);
    case InsertFilterAction::FilterAndDelete:
        return filterPage(2);
    case InsertFilterAction::FilterAndOutput:
        return filterPage(3);
    }
    return nullptr;
}

// Dividing by column exists whole-text and with the ranges taken out; dividing by range-row and
// range-column only with the ranges taken out.
std::unique_ptr<FilePage> divideOrMergePage(const RunContext& context, DivideMergeAction action) {
    const bool rangesOut = context.mode == RangeMode::RangesOut;
    switch (action) {
    case DivideMergeAction::DivideByRow:
        return std::make_unique<RowDividePage>(context);
    case DivideMergeAction::DivideByColumn:
        if (context.mode == RangeMode::InPlace)
            return nullptr;
        return std::make_unique<ColumnDividePage>(context);
    case DivideMergeAction::DivideByRangeRow:
    case DivideMergeAction::DivideByRangeColumn:
        if (!rangesOut)
            return nullptr;
        return std::make_unique<RangeDividePage>(context,
                                                 action == DivideMergeAction::DivideByRangeRow);
    case DivideMergeAction::Merge:
        return std::make_unique<MergePage>(context);
    }
    return nullptr;
}

} // namespace

std::unique_ptr<FilePage> makeFilePage(const RunContext& context, const TaskCodes& codes) {
    if (!codes.page)
        return nullptr;
    switch (*codes.page) {
    case PageCode::Calculate:
        return std::make_unique<LinePage>(context, [&context](RunAlerts* alerts) {
            return makeCalculation(context.settings, context.columnRanges, alerts);
        });
    case PageCode::FindAndReplace:
        return std::make_unique<LinePage>(context, [&context](RunAlerts*) {
            return makeReplacement(context.settings, context.columnRanges);
        });
    case PageCode::InsertOrFilter:
        if (!codes.insertFilterAction)
            return nullptr;
        return insertOrFilterPage(context, *codes.insertFilterAction);
    case PageCode::DivideOrMerge:
        if (!codes.divideMergeAction)
            return nullptr;
        return divideOrMergePage(context, *codes.divideMergeAction);
    }
    return nullptr;
}

} // namespace morlevant
