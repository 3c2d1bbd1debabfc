#include <windows.h>

#include <ole2.h>

#include <filesystem>
#include <string>
#include <vector>

#include "bare_import.h"
#include "box_model.h"
#include "heap_size.h"
#include "hosting/late_bound.h"
#include "node_list.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using bench::Figures;
using bench::Times;
using hosting::LateBound;
using hosting::Ref;

constexpr long manyObjects = 1'000'000;
constexpr long someObjects = 100'000;
constexpr long fewObjects = 1'000;
constexpr int rounds = 5;
/// How often a single call is repeated where it is measured.
constexpr long calls = 1'000;

/// The files of this program, over a gigabyte: beside it, because temporary folders may be in
/// memory. They go with it.
class Files {
public:
    Files() : folder_(fs::path(_wpgmptr).parent_path() / L"bench-repository") {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        bench::WriteBoxMetamodel(metamodel.string());
        bench::WriteBoxModel(manyModel.string(), manyObjects);
        bench::WriteBoxModel(someModel.string(), someObjects);
        bench::WriteBoxModel(fewModel.string(), fewObjects);
    }
    ~Files() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

private:
    const fs::path folder_;

public:
    const fs::path metamodel = folder_ / "box.ecore";
    const fs::path manyModel = folder_ / "many.xmi";
    const fs::path someModel = folder_ / "some.xmi";
    const fs::path fewModel = folder_ / "few.xmi";
    const fs::path many = folder_ / "many.orvane";
    const fs::path some = folder_ / "some.orvane";
    const fs::path few = folder_ / "few.orvane";
    const fs::path again = folder_ / "again.orvane";
};

LateBound NewRepository() {
    return LateBound::Create(L"OrvaneRepository.Repository");
}

LateBound Open(const fs::path& file) {
    LateBound repository = NewRepository();
    repository.Call(L"Open", file.c_str());
    return repository;
}

void Import(const Files& files, const fs::path& model, const fs::path& repositoryFile) {
    const LateBound repository = NewRepository();
    repository.Call(L"New", repositoryFile.c_str());
    const long messages = repository.Call(L"Import", files.metamodel.c_str(), model.c_str());
    repository.Call(L"Close");
    if (messages != 0) throw hosting::Error(E_FAIL, L"The import has not understood the model.");
}

LateBound Parts(const LateBound& repository) {
    return LateBound(repository.Call(L"MetaNodes", L"Part"));
}

/// Against reading the same file and inserting the same rows.
void MeasureImport(Figures& figures, const Files& files) {
    Import(files, files.fewModel, files.few);
    Import(files, files.someModel, files.some);
    const bench::RepositoryRows rows(files.some.string());
    const Times some = bench::Compare(
        3, [&] { Import(files, files.someModel, files.again); },
        [&] {
            bench::ReadXml(files.someModel.string());
            rows.Insert(files.again.string());
        },
        [&] { fs::remove(files.again); });
    figures.Add("repository_import_100000_to_bare_inserts", some, 3.0);
    // One large import, amid as many objects in small ones.
    double small = 0;
    const auto importSmall = [&](long times) {
        for (long i = 0; i < times; ++i) {
            small += bench::Best(
                1, [&] { Import(files, files.someModel, files.again); },
                [&] { fs::remove(files.again); });
        }
    };
    constexpr long parts = manyObjects / someObjects;
    importSmall(parts / 2);
    const double many = bench::Best(1, [&] { Import(files, files.manyModel, files.many); });
    importSmall(parts - parts / 2);
    figures.Add("repository_import_growth_to_1000000", Times{many, small}, 1.5);
}

/// Opening until the first node has been found.
void MeasureOpening(Figures& figures, const Files& files) {
    const auto open = [](const fs::path& file) {
        for (int i = 0; i < 20; ++i) {
            const LateBound repository = Open(file);
            const LateBound node(Parts(repository).Call(L"Extension", L"p7"));
            repository.Call(L"Close");
        }
    };
    figures.Add("repository_open_1000000_to_1000",
                bench::Compare(
                    rounds, [&] { open(files.many); }, [&] { open(files.few); }),
                2.0);
}

/// A repository and some of its nodes in no order.
struct Opened {
    Opened(const fs::path& file, long objects) : repository(Open(file)) {
        for (long i = 0; i < calls; ++i) {
            numbers.push_back(i * 7919 % bench::PartsAmong(objects));
            nodes.emplace_back(Parts(repository).Call(L"Extension", Key(numbers.back()).c_str()));
        }
    }
    ~Opened() {
        nodes.clear();
        repository.Call(L"Close");
    }
    static std::wstring Key(long number) { return L"p" + std::to_wstring(number); }

    LateBound repository;
    LateBound parts = Parts(repository);
    std::vector<long> numbers;
    std::vector<LateBound> nodes;
};

/// The time of a member in a large repository to that in a small one.
void MeasureSingleCalls(Figures& figures, const Files& files) {
    const Opened many(files.many, manyObjects);
    const Opened few(files.few, fewObjects);
    const auto compare = [&](const char* name, auto&& work) {
        const auto all = [&work](const Opened& opened) {
            return [&] {
                for (long i = 0; i < calls; ++i) work(opened, static_cast<std::size_t>(i));
            };
        };
        figures.Add(name, bench::Compare(15, all(many), all(few)), 2.0);
    };
    compare("repository_find_by_key_in_1000000_to_1000", [](const Opened& opened, std::size_t i) {
        opened.parts.Call(L"Extension", Opened::Key(opened.numbers[i]).c_str());
    });
    compare("repository_find_by_name_in_1000000_to_1000", [](const Opened& opened, std::size_t i) {
        const std::wstring name = L"Part " + std::to_wstring(opened.numbers[i]);
        LateBound(opened.parts.Call(L"FindByName", name.c_str())).Call(L"Item", 1L);
    });
    compare("repository_get_property_in_1000000_to_1000", [](const Opened& opened, std::size_t i) {
        opened.nodes[i].Call(L"GetProperty", L"size");
    });
    const auto cheapest = hosting::Make<bench::MetaNode>(static_cast<std::size_t>(calls));
    Figures::Note("repository_get_property_to_cheapest_object",
                  bench::Compare(
                      rounds,
                      [&] {
                          for (const LateBound& node : many.nodes) {
                              node.Call(L"GetProperty", L"name");
                          }
                      },
                      [&] {
                          for (std::size_t i = 0; i < static_cast<std::size_t>(calls); ++i) {
                              LateBound(cheapest->At(i)).Call(L"GetProperty", L"Name");
                          }
                      }));
}

/// Goes through a collection as For Each does; answers how many there were, and in `mostHeap` how
/// large the heap was at most.
long Enumerate(const LateBound& collection, std::size_t* mostHeap = nullptr) {
    const _variant_t made = collection.Get(L"_NewEnum");
    Ref<IEnumVARIANT> cursor;
    hosting::Check(V_UNKNOWN(&made)->QueryInterface(IID_PPV_ARGS(&cursor)), L"enumerating");
    long count = 0;
    for (_variant_t each; cursor->Next(1, &each, nullptr) == S_OK; each.Clear()) {
        if (++count % 20'000 == 0 && mostHeap != nullptr) {
            *mostHeap = std::max(*mostHeap, bench::HeapSize());
        }
    }
    return count;
}

void MeasureEnumeration(Figures& figures, const Files& files) {
    // Each time in a repository that has nothing of the file in memory yet.
    const auto enumerate = [](const fs::path& file, std::size_t* mostHeap = nullptr) {
        const LateBound repository = Open(file);
        const long count = Enumerate(LateBound(Parts(repository).Call(L"Extension")), mostHeap);
        repository.Call(L"Close");
        return count;
    };
    const Times times = bench::Compare(
        3, [&] { enumerate(files.many); },
        [&] {
            for (long i = 0; i < manyObjects / someObjects; ++i) enumerate(files.some);
        });
    figures.Add("repository_enumeration_growth_to_1000000", times, 1.5);
    const std::size_t before = bench::HeapSize();
    std::size_t most = before;
    const long count = enumerate(files.many, &most);
    // The database's page cache of 32,000 KiB, and no more: a held node has hundreds of bytes.
    figures.Add("repository_enumeration_bytes_per_node",
                static_cast<double>(most - before) / static_cast<double>(count), 50.0);
}

void Measure(Figures& figures) {
    const Files files;
    MeasureImport(figures, files);
    MeasureOpening(figures, files);
    MeasureSingleCalls(figures, files);
    MeasureEnumeration(figures, files);
}

}  // namespace

int wmain() {
    return bench::RunProgram(Measure);
}
