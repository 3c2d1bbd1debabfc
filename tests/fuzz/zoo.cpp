#include "fuzz/zoo.h"

#include "support/pump.h"

namespace fuzz {

using support::Arguments;
using support::Failure;
using support::FakeCollection;
using support::FakeObject;
using support::Member;
using support::Ref;
using support::Value;

Zoo::Zoo() {
    model_.Log().enabled = false;
    auto* book = model_.MetaNode("Book");
    auto* cites = model_.MetaLink("cites", book, book);
    auto* year = model_.MetaProperty(book, "Year", "Long");
    auto* trees = model_.Node(book, "b1", "On Trees");
    auto* link = model_.Link(cites, trees, model_.Node(book, "b2"), "c1");
    animals_ = {{"repository", model_.Root()}, {"meta node", book}, {"meta link", cites},
                {"meta property", year},       {"node", trees},     {"link", link}};
    anything_ = MakeAnything("anything");
    animals_.push_back({"anything", anything_.Get()});
    const auto plain = FakeObject::Make("plain");
    kept_.push_back(plain);
    animals_.push_back({"object without members", plain.Get()});
    AddWrongAnswers();
    AddWrongCollections();
    AddCallers();
}

Zoo::~Zoo() {
    for (const auto& object : kept_) object->Dismantle();
}

Ref<FakeObject> Zoo::MakeAnything(const std::string& name) {
    const auto object = FakeObject::Make(name);
    const auto elements = FakeCollection::Make(name + "'s elements");
    kept_.push_back(object);
    kept_.push_back(elements);
    FakeObject* const self = object.Get();
    IDispatch* const friendly = anything_ ? anything_.Get() : self;
    elements->Add("Name", self).Add("Year", friendly).Add("b1", friendly);
    for (const char* text : {"name", "identifier", "Description", "DataType"})
        object->Property(text, name);
    for (const char* flag : {"IsDynamic", "IsPersistent"}) object->Property(flag, true);
    for (const char* other : {"parent", "source", "Target", "MetaType", "MetaEnum"})
        object->Property(other, friendly);
    const auto give = [many = elements.Get(), friendly](FakeObject&, Arguments& arguments) {
        return arguments.Count() == 0 ? Value(static_cast<IDispatch*>(many)) : Value(friendly);
    };
    for (const char* collection :
         {"MetaNodes", "MetaLinks", "MetaTypes", "Extension", "Properties", "MetaAtoms"})
        object->Define({.name = collection, .most = 1, .get = give});
    for (const char* method :
         {"Outgoing_", "Incoming_", "Outgoing", "Incoming", "GetDynamicProperties"})
        object->Define({.name = method,
                        .most = 1,
                        .isMethod = true,
                        .get = [many = elements.Get()](FakeObject&, Arguments&) -> Value {
                            return static_cast<IDispatch*>(many);
                        }});
    object->Function("GetProperty", 1, 1, [name](Arguments&) { return name; });
    object->Function("SetProperty", 1, 2, [](Arguments&) { return Value(); });
    for (const char* maker : {"MakeNode", "MakeLink", "MakeProperty", "RemoveClass"})
        object->Function(maker, [friendly](Arguments&) { return friendly; });
    object->Function("GetUUID", 0, 0, [](Arguments&) { return "uuid"; });
    lastElements_ = elements.Get();
    return object;
}

void Zoo::Add(const std::string& name, const Spoil& spoil) {
    const auto object = MakeAnything(name);
    spoil(*object.Get(), *lastElements_);
    animals_.push_back({name, object.Get()});
}

void Zoo::AddWrongAnswers() {
    const std::pair<const char*, Value> answers[] = {
        {"Null", support::Null()},
        {"Empty", support::Empty()},
        {"Nothing", support::Nothing()},
        {"an error value", support::ErrorValue(E_FAIL)},
        {"an array", support::Bytes({1, 2, 3})},
        {"a huge text", std::string(200000, 'x')},
        {"a null text", support::NullText()},
        {"a number", 5},
        {"an object", anything_},
    };
    for (const auto& [what, answer] : answers)
        for (const char* member : {"GetProperty", "name", "identifier", "Target", "Outgoing_",
                                   "Extension", "MetaNodes", "Properties"})
            Add(std::string(member) + " gives " + what,
                [member, answer](FakeObject& object, FakeCollection&) {
                    object.On(member).Answer(answer);
                });
    const std::pair<const char*, Failure> failures[] = {
        {"an error", Failure::Exception(static_cast<HRESULT>(0x800A0005), "wrong")},
        {"a deferred error", Failure::Deferred(E_FAIL, "later")},
        {"an empty error", Failure::Exception(0, "", "")},
        {"a type mismatch", Failure::Result(DISP_E_TYPEMISMATCH, 7)},
        {"an unknown name", Failure::UnknownName()},
        {"no connection", Failure::Result(RPC_E_DISCONNECTED)},
    };
    for (const auto& [what, failure] : failures)
        for (const char* member : {"GetProperty", "name", "identifier", "Target", "Extension"})
            Add(std::string(member) + " fails with " + what,
                [member, failure](FakeObject& object, FakeCollection&) {
                    object.On(member).Fail(failure);
                });
    Add("dead object", [](FakeObject& object, FakeCollection&) { object.Disconnect(); });
}

void Zoo::AddWrongCollections() {
    constexpr std::size_t bound = 300;
    Add("no enumerator",
        [](FakeObject&, FakeCollection& elements) { elements.Lacks(support::newEnumMember); });
    Add("a text for an enumerator", [](FakeObject&, FakeCollection& elements) {
        elements.On(support::newEnumMember).Answer("text");
    });
    Add("Nothing for an enumerator", [](FakeObject&, FakeCollection& elements) {
        elements.On(support::newEnumMember).Answer(support::Nothing());
    });
    Add("an object for an enumerator", [this](FakeObject&, FakeCollection& elements) {
        elements.On(support::newEnumMember).Answer(anything_);
    });
    Add("Count of -1",
        [](FakeObject&, FakeCollection& elements) { elements.On("Count").Answer(-1); });
    Add("null elements", [](FakeObject&, FakeCollection& elements) {
        elements.Add(support::Nothing()).Add(support::Null()).Add(support::Empty());
    });
    Add("elements that are no objects", [](FakeObject&, FakeCollection& elements) {
        elements.Add("text").Add(5).Add(support::ErrorValue(E_FAIL));
    });
    Add("a collection that dies",
        [](FakeObject&, FakeCollection& elements) { elements.manners.failsAt = 1; });
    Add("a collection that never ends", [](FakeObject&, FakeCollection& elements) {
        elements.manners.endless = true;
        elements.manners.bound = bound;
    });
    Add("a collection that stalls",
        [](FakeObject&, FakeCollection& elements) { elements.manners.blockLimit = 0; });
    Add("short blocks",
        [](FakeObject&, FakeCollection& elements) { elements.manners.blockLimit = 1; });
    Add("an overstated count",
        [](FakeObject&, FakeCollection& elements) { elements.manners.overstatesCount = true; });
    Add("an unstated count",
        [](FakeObject&, FakeCollection& elements) { elements.manners.silentCount = true; });
    Add("a collection that changes", [](FakeObject&, FakeCollection& elements) {
        elements.manners.live = true;
        elements.manners.onNext = [&elements](std::size_t given) {
            if (given < bound) elements.Remove("Name");
            if (given < bound) elements.Add("again", support::Nothing());
        };
        elements.manners.endless = true;
        elements.manners.bound = bound;
    });
}

void Zoo::AddCallers() {
    // Bounded, because what is called here may come here again.
    const auto once = [this](const std::function<void()>& work) {
        if (depth_ >= 2 || !work) return;
        ++depth_;
        work();
        --depth_;
    };
    for (const char* member :
         {"name", "identifier", "GetProperty", "Target", "Extension", "Outgoing_"}) {
        Add(std::string(member) + " calls back",
            [this, member, once](FakeObject& object, FakeCollection&) {
                object.On(member).Run([this, once] { once(reenter); });
            });
        Add(std::string(member) + " lets go of the caller",
            [this, member, once](FakeObject& object, FakeCollection&) {
                object.On(member).Run([this, once] { once(abandon); });
            });
    }
    Add("messages in the middle", [](FakeObject& object, FakeCollection&) {
        object.On("GetProperty").Run([] { support::Pump(); });
    });
    Add("an enumeration that calls back", [this, once](FakeObject&, FakeCollection& elements) {
        elements.manners.onNext = [this, once](std::size_t) { once(reenter); };
    });
}

}  // namespace fuzz
