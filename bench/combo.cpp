#include <windows.h>

#include <filesystem>

#include "bare_list.h"
#include "hosting/class_id.h"
#include "hosting/error.h"
#include "hosting/late_bound.h"
#include "node_list.h"
#include "program.h"

namespace {

using bench::Figures;
using bench::Times;
using hosting::LateBound;
using hosting::Ref;

constexpr std::size_t manyRows = 100000;
constexpr int rounds = 7;

/// Filling with many rows, against the bare loop on the same objects.
void MeasureFilling(Figures& figures) {
    const Ref<IDispatch> metaNode = hosting::Make<bench::MetaNode>(manyRows);
    const LateBound combo = LateBound::Create(L"OrvaneControls.Combo");
    bench::BareList bare;
    combo.Call(L"Create");
    const Times times = bench::Compare(
        rounds, [&] { combo.Call(L"SetList_Nodes", metaNode.Get(), L"Name"); },
        [&] { bare.Fill(*metaNode.Get(), L"Name"); },
        [&] {
            combo.Call(L"Clear");
            bare.Clear();
        });
    figures.Add("combo_fill_100000_to_bare_loop", times, 1.15);
}

/// The time of twice as many rows to that of half as many.
void MeasureGrowth(Figures& figures) {
    const LateBound combo = LateBound::Create(L"OrvaneControls.Combo");
    const Ref<IDispatch> all = hosting::Make<bench::MetaNode>(manyRows);
    const Ref<IDispatch> half = hosting::Make<bench::MetaNode>(manyRows / 2);
    const Times times = bench::Compare(
        rounds, [&] { combo.Call(L"SetList_Nodes", all.Get(), L"Name"); },
        [&] { combo.Call(L"SetList_Nodes", half.Get(), L"Name"); }, [&] { combo.Call(L"Clear"); });
    figures.Add("combo_growth_50000_to_100000", times, 2.1);
}

/// One late-bound call as a host makes it, against the type information's own Invoke.
class CallPair {
public:
    explicit CallPair(IDispatch* object) : object_(object) {
        hosting::Check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info_.GetAddressOf()),
                       L"get the type information");
    }

    Times Measure(const wchar_t* member, WORD kind, const VARIANT* argument) {
        constexpr int calls = 20000;
        const auto many = [&](auto&& invoke) {
            return [&, invoke] {
                for (int i = 0; i < calls; ++i) {
                    VARIANT passed = argument != nullptr ? *argument : VARIANT{};
                    DISPPARAMS parameters = {&passed, nullptr, argument != nullptr ? 1u : 0u, 0};
                    _variant_t result;
                    hosting::Check(invoke(parameters, result), L"call");
                }
            };
        };
        auto name = const_cast<wchar_t*>(member);
        EXCEPINFO exception = {};
        UINT badArgument = 0;
        const auto ours = [&](DISPPARAMS& parameters, VARIANT& result) {
            DISPID id = 0;
            const HRESULT found =
                object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
            if (FAILED(found)) return found;
            return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result,
                                   &exception, &badArgument);
        };
        const auto theirs = [&](DISPPARAMS& parameters, VARIANT& result) {
            DISPID id = 0;
            const HRESULT found = info_->GetIDsOfNames(&name, 1, &id);
            if (FAILED(found)) return found;
            return info_->Invoke(object_.Get(), id, kind, &parameters, &result, &exception,
                                 &badArgument);
        };
        return bench::Compare(rounds, many(ours), many(theirs));
    }

private:
    Ref<IDispatch> object_;
    Ref<ITypeInfo> info_;
};

void MeasureCalls(Figures& figures) {
    const LateBound combo = LateBound::Create(L"OrvaneControls.Combo");
    CallPair pair(combo.Get());
    figures.Add("combo_get_selection_to_typeinfo",
                pair.Measure(L"selection", DISPATCH_PROPERTYGET, nullptr), 1.0);
    VARIANT colour = {};
    V_VT(&colour) = VT_I4;
    V_I4(&colour) = 0x00C0FFC0;
    figures.Add("combo_set_colour_to_typeinfo",
                pair.Measure(L"SetBackGroundColor", DISPATCH_METHOD, &colour), 1.0);
}

void Measure(Figures& figures) {
    MeasureFilling(figures);
    MeasureGrowth(figures);
    MeasureCalls(figures);
}

}  // namespace

int wmain() {
    return bench::RunProgram(Measure);
}
