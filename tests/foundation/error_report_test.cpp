#include "foundation/error_report.h"

#include <gtest/gtest.h>

#include <functional>

#include "ole/error.h"
#include "ole/object.h"
#include "support/dialog_watcher.h"
#include "support/fake_object.h"

namespace foundation {
namespace {

using support::DialogWatcher;
using support::Failure;
using support::FakeObject;
using support::SeenDialog;

/// The error that a late-bound call ends with.
_com_error ErrorOf(const Failure& failure) {
    const auto object = FakeObject::Make("object");
    object->Function("Work", [](support::Arguments&) { return support::Value(); });
    object->On("Work").Fail(failure);
    try {
        ole::Object(object.Get()).Call(L"Work");
    } catch (const _com_error& error) {
        return error;
    }
    return _com_error(S_OK);
}

TEST(ErrorReport, SaysNumberDescriptionAndSourceAndWhere) {
    const _com_error error = ErrorOf(
        Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing", "Some.Repository"));
    EXPECT_EQ(ErrorReportText(error, L"List", L"Refresh"),
              L"Error No:1004  'no such thing'\r\n  'Some.Repository'\r\n"
              L"(Module 'List' Function 'Refresh')");
}

TEST(ErrorReport, WithoutAModuleDoesNotSayWhere) {
    const _com_error error = ErrorOf(
        Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing", "Some.Repository"));
    EXPECT_EQ(ErrorReportText(error, L"", L"Refresh"),
              L"Error No:1004  'no such thing'\r\n  'Some.Repository'\r\n");
}

TEST(ErrorReport, WithoutAFunctionSaysTheModule) {
    const _com_error error = ErrorOf(Failure::Exception(static_cast<HRESULT>(0x800A0005), "", ""));
    EXPECT_EQ(ErrorReportText(error, L"List", L""),
              L"Error No:5  ''\r\n  ''\r\n(Module 'List' Function '')");
}

TEST(ErrorReport, ShowsOtherNumbersWhole) {
    const _com_error error =
        ErrorOf(Failure::Exception(static_cast<HRESULT>(0x80042001), "odd", "R"));
    EXPECT_EQ(ErrorReportText(error, L"", L""), L"Error No:-2147213311  'odd'\r\n  'R'\r\n");
}

TEST(ErrorReport, IsOneMessageBoxThatSwallowsTheError) {
    const _com_error error = ErrorOf(
        Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing", "Some.Repository"));
    DialogWatcher dialogs;
    dialogs.Expect();
    ReportError(error, L"List", L"Refresh");
    const SeenDialog expected = {"OrvaneUtility",
                                 "Error No:1004  'no such thing'\r\n  'Some.Repository'\r\n"
                                 "(Module 'List' Function 'Refresh')",
                                 {"OK"},
                                 "error"};
    ASSERT_EQ(dialogs.Seen().size(), 1u);
    EXPECT_EQ(dialogs.Seen().front(), expected);
}

}  // namespace
}  // namespace foundation
