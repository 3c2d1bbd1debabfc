#include "fuzz/fuzz_case.h"
#include "fuzz/planted_target.h"
#include "fuzz/progress.h"
#include "hosting/apartment.h"
#include "support/double.h"
#include "support/leaks.h"
#include "support/logging_container.h"
#include "support/pump.h"
#include "support/server.h"

#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>

using support::Ref;

namespace {

fuzz::Progress* theProgress = nullptr;

LONG WINAPI EndAtOnce(EXCEPTION_POINTERS* exception) {
    if (theProgress != nullptr) theProgress->DieAt(exception->ExceptionRecord->ExceptionAddress);
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

/// Makes new objects of the class under test.
class Maker {
public:
    explicit Maker(const std::string& target) {
        constexpr std::string_view planted = "planted ";
        if (target.starts_with(planted)) {
            make_ = [fault = target.substr(planted.size())] {
                return fuzz::MakePlantedTarget(fault);
            };
            return;
        }
        server_.emplace();
        make_ = [this, target] { return server_->Create(target); };
    }

    [[nodiscard]] Ref<IDispatch> Make() const { return make_(); }
    [[nodiscard]] std::optional<support::ServerCounts> Live() const {
        return server_ ? server_->Live() : std::nullopt;
    }

private:
    std::optional<support::Server> server_;
    std::function<Ref<IDispatch>()> make_;
};

/// One object under test after the other, on a form or alone, and what it leaves behind.
class Bench {
public:
    Bench(const Maker& maker, bool hosted, fuzz::Zoo& zoo)
        : maker_(maker), hosted_(hosted), zoo_(zoo) {
        zoo_.reenter = [this] { Reenter(); };
        zoo_.abandon = [this] { Abandon(); };
    }

    [[nodiscard]] Ref<IDispatch> Object() {
        if (!object_) Begin();
        return object_;
    }

    /// Lets go of the object and says what stayed.
    std::vector<std::string> End() {
        Abandon();
        support::Pump();
        support::BuryDoubles();
        std::vector<std::string> left;
        if (began_) {
            for (const std::string& violation : support::TakeViolations())
                left.push_back(violation);
            if (support::LiveDoubles() > doubles_)
                left.push_back(std::to_string(support::LiveDoubles() - doubles_) +
                               " doubles are still held");
            const auto references = References();
            for (const auto& [name, count] : references)
                if (const auto before = references_.find(name);
                    before != references_.end() && count > before->second)
                    left.push_back(std::to_string(count - before->second) + " references to <" +
                                   name + "> are still held");
            if (maker_.Live() != server_)
                left.push_back("the server keeps objects, windows or handles");
            for (const std::string& window : support::WindowCensus::Take().Since(windows_))
                left.push_back("window " + window);
        }
        began_ = false;
        return left;
    }

private:
    void Begin() {
        if (!began_) {
            support::BuryDoubles();
            doubles_ = support::LiveDoubles();
            references_ = References();
            server_ = maker_.Live();
            windows_ = support::WindowCensus::Take();
            began_ = true;
        }
        object_ = maker_.Make();
        if (!hosted_) return;
        container_ = std::make_unique<support::LoggingContainer>(object_.Get());
        container_->Log().enabled = false;
        support::PlayRunningForm(*container_);
    }

    void Abandon() {
        // The container may be in use further down; its own members see to that.
        const auto container = std::move(container_);
        const Ref<IDispatch> object = std::move(object_);
    }

    void Reenter() {
        const Ref<IDispatch> object = object_;
        if (!object) return;
        if (members_.empty()) members_ = fuzz::ReadMembers(*object.Get());
        const std::vector<fuzz::NamedValue> value = {{"anything", zoo_.Anything()}};
        for (int call = 0; call < 2 && !members_.empty(); ++call) {
            fuzz::Case next;
            next.member = &members_[turn_++ % members_.size()];
            next.kind = next.member->IsPut()
                            ? next.member->kind
                            : static_cast<WORD>(DISPATCH_METHOD | DISPATCH_PROPERTYGET);
            next.arguments.resize(next.member->parameters.size());
            if (next.member->IsPut()) next.named = {DISPID_PROPERTYPUT};
            fuzz::Run(next, *object.Get(), value);
        }
    }

    using Counts = std::map<std::string, unsigned long>;

    [[nodiscard]] Counts References() const {
        Counts counts;
        for (const auto& animal : zoo_.Animals())
            if (const auto* known = dynamic_cast<support::Double*>(animal.object))
                counts[animal.name] = known->References();
        return counts;
    }

    const Maker& maker_;
    bool hosted_;
    fuzz::Zoo& zoo_;
    Ref<IDispatch> object_;
    std::unique_ptr<support::LoggingContainer> container_;
    std::vector<fuzz::Member> members_;
    std::size_t turn_ = 0;
    bool began_ = false;
    long doubles_ = 0;
    Counts references_;
    std::optional<support::ServerCounts> server_;
    support::WindowCensus windows_;
};

/// Makes the calls whose turn has come.
class Driver {
public:
    Driver(fuzz::Progress& progress, Bench& bench, const std::vector<fuzz::NamedValue>& lattice,
           long from)
        : progress_(progress), bench_(bench), lattice_(lattice), from_(from) {}

    /// A batch of calls on one object, or on several where it is let go of in the middle.
    void RunAll(const std::vector<fuzz::Case>& cases, const std::string& title) {
        bool made = false;
        for (const fuzz::Case& each : cases) {
            if (next_++ < from_) continue;
            made = true;
            const std::string text = each.Text(lattice_);
            progress_.Begin(next_ - 1, text);
            const Ref<IDispatch> object = bench_.Object();
            fuzz::Run(each, *object.Get(), lattice_);
            for (const std::string& violation : support::TakeViolations())
                progress_.Report(violation + " in " + text);
        }
        if (!made) return;
        for (const std::string& left : bench_.End()) progress_.Report(left + " after " + title);
    }

    void RunPlumbing() {
        if (next_++ < from_) return;
        progress_.Begin(next_ - 1, "plumbing");
        const Ref<IDispatch> object = bench_.Object();
        fuzz::TryPlumbing(*object.Get());
    }

private:
    fuzz::Progress& progress_;
    Bench& bench_;
    const std::vector<fuzz::NamedValue>& lattice_;
    long from_;
    long next_ = 0;
};

/// Keeps dialogs from coming up: whoever wants to show one goes on as if it had been closed. To
/// show and answer each of thousands would take most of the time.
class NoDialogs {
public:
    NoDialogs() : hook_(SetWindowsHookExW(WH_CBT, Refuse, nullptr, GetCurrentThreadId())) {}
    ~NoDialogs() { UnhookWindowsHookEx(hook_); }
    NoDialogs(const NoDialogs&) = delete;
    NoDialogs& operator=(const NoDialogs&) = delete;

private:
    static LRESULT CALLBACK Refuse(int code, WPARAM wide, LPARAM large) {
        if (code == HCBT_CREATEWND) {
            wchar_t name[8] = L"";
            GetClassNameW(reinterpret_cast<HWND>(wide), name, 8);
            if (std::wcscmp(name, L"#32770") == 0) return 1;
        }
        return CallNextHookEx(nullptr, code, wide, large);
    }

    HHOOK hook_;
};

void TryEverything(const std::string& target, bool hosted, fuzz::Progress& progress, long from) {
    const Maker maker(target);
    const NoDialogs noDialogs;
    fuzz::Zoo zoo;
    const std::vector<fuzz::NamedValue> lattice = fuzz::MakeLattice(zoo);
    const std::vector<fuzz::Member> members = fuzz::ReadMembers(*maker.Make().Get());
    if (members.empty()) progress.Report(target + " has no members to call");
    Bench bench(maker, hosted, zoo);
    Driver driver(progress, bench, lattice, from);
    driver.RunPlumbing();
    if (!hosted)
        for (const fuzz::Member& member : members)
            driver.RunAll(fuzz::SystematicCases(member, lattice), member.Title());
    constexpr std::size_t batch = 200;
    constexpr unsigned batches = 10;
    for (unsigned seed = 1; seed <= batches; ++seed)
        driver.RunAll(fuzz::RandomCases(members, lattice, batch, seed),
                      "random calls " + std::to_string(seed));
}

}  // namespace

/// fuzz_child TARGET MODE PROGRESS FROM: makes all calls from a number on.
int wmain(int count, wchar_t** arguments) {
    if (count != 5) return 2;
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    SetUnhandledExceptionFilter(EndAtOnce);
    fuzz::Progress progress{std::wstring(arguments[3])};
    if (!progress.IsOpen()) return 3;
    theProgress = &progress;
    const hosting::Apartment apartment;
    try {
        TryEverything(support::Utf8(std::wstring_view(arguments[1])),
                      std::wstring(arguments[2]) == L"hosted", progress,
                      std::wcstol(arguments[4], nullptr, 10));
    } catch (const std::exception& error) {
        progress.Report(error.what());
    }
    support::Pump();
    return 0;
}
