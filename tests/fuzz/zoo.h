#pragma once

#include "support/fake_repository.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fuzz {

/// Objects to pass to the controls: a small repository that behaves, an object that can be anything
/// in a repository, and copies of it that each misbehave in one way.
class Zoo {
public:
    Zoo();
    ~Zoo();
    Zoo(const Zoo&) = delete;
    Zoo& operator=(const Zoo&) = delete;

    /// What objects that call back do in the middle of a call: with the object under test.
    std::function<void()> reenter;
    std::function<void()> abandon;

    struct Animal {
        std::string name;
        IDispatch* object;
    };
    [[nodiscard]] const std::vector<Animal>& Animals() const { return animals_; }
    /// One that offers everything and behaves.
    [[nodiscard]] IDispatch* Anything() const { return anything_.Get(); }

private:
    using Spoil =
        std::function<void(support::FakeObject& object, support::FakeCollection& elements)>;

    support::Ref<support::FakeObject> MakeAnything(const std::string& name);
    void Add(const std::string& name, const Spoil& spoil);
    void AddWrongAnswers();
    void AddWrongCollections();
    void AddCallers();

    support::FakeRepository model_;
    support::SharedLog quiet_;
    support::Ref<support::FakeObject> anything_;
    support::FakeCollection* lastElements_ = nullptr;
    std::vector<support::Ref<support::FakeObject>> kept_;
    std::vector<Animal> animals_;
    int depth_ = 0;
};

}  // namespace fuzz
