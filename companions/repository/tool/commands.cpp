#include "repository/tool/commands.h"

#include <chrono>
#include <iomanip>
#include <ostream>
#include <stdexcept>

#include "repository/ecore/exporter.h"
#include "repository/ecore/file.h"
#include "repository/ecore/importer.h"
#include "repository/store/error.h"
#include "repository/store/file.h"
#include "repository/store/store.h"
#include "repository/tool/query_connection.h"

namespace repository::tool {

namespace {

using store::Store;

constexpr const char* usage =
    "Usage: orvane-repository COMMAND REPOSITORY ...\n"
    "\n"
    "  import REPOSITORY FILE...  brings Ecore metamodels and XMI models into a repository file,\n"
    "                             which is made where there is none; prints counts and messages\n"
    "  export REPOSITORY FILE     writes the model to the file as XMI and the metamodel beside "
    "it,\n"
    "                             with the ending .ecore\n"
    "  info REPOSITORY            prints what the repository contains\n"
    "  check REPOSITORY           looks for damage\n"
    "  query REPOSITORY SQL       prints the rows of a query; nothing is changed\n"
    "\n"
    ":memory: is a repository in memory. Ends with 0, with 1 after a failure, with 2 where the\n"
    "command line is wrong.\n";

void Print(std::ostream& output, const std::vector<std::string>& messages) {
    for (const std::string& message : messages) output << message << '\n';
}

void Import(const std::vector<std::string>& arguments, std::ostream& output) {
    const std::string& path = arguments[1];
    const std::vector<std::string> files(arguments.begin() + 2, arguments.end());
    for (const std::string& file : files) {
        if (!ecore::IsXml(file)) {
            throw store::Error(store::Number::invalidFileFormat, "\"" + file + "\" is no XML");
        }
    }
    const bool isThere = path == store::inMemory || ecore::IsFile(path);
    auto repository = isThere ? Store::Open(path) : Store::Create(path);
    const auto begin = std::chrono::steady_clock::now();
    ecore::ImportResult result;
    try {
        result = ecore::Import(*repository, files);
    } catch (...) {
        repository.reset();
        if (!isThere) store::RemoveFile(store::Absolute(path));
        throw;
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    const ecore::Counts& counts = result.counts;
    Print(output, result.messages);
    output << "packages " << counts.packages << ", classes " << counts.classes << ", attributes "
           << counts.attributes << ", references " << counts.references << ", enumerations "
           << counts.enumerations << '\n'
           << "objects " << counts.objects << ", values " << counts.values << ", links "
           << counts.links << ", containments " << counts.containments << '\n'
           << "messages " << result.messages.size() << ", seconds " << std::fixed
           << std::setprecision(2) << time.count() << '\n';
}

void Export(const std::vector<std::string>& arguments, std::ostream& output) {
    const auto repository = Store::Open(arguments[1]);
    const auto messages = ecore::Export(*repository, arguments[2]);
    const ecore::ExportPaths paths = ecore::PathsFor(arguments[2]);
    Print(output, messages);
    output << paths.metamodel << '\n'
           << paths.model << '\n'
           << "messages " << messages.size() << '\n';
}

void Info(const std::vector<std::string>& arguments, std::ostream& output) {
    const auto repository = Store::Open(arguments[1]);
    const store::MetaModel& meta = repository->Meta();
    std::int64_t nodes = 0;
    std::int64_t links = 0;
    std::size_t metaNodes = 0;
    for (const store::MetaNodeRef& each : meta.nodes) {
        if (each->builtIn) continue;
        ++metaNodes;
        const std::int64_t count = repository->Count(store::ObjectSet::Instances(*each));
        if (count > 0) output << each->name << ' ' << count << '\n';
        nodes += count;
    }
    for (const store::MetaLinkRef& each : meta.links) {
        const std::int64_t count = repository->Count(store::ObjectSet::Instances(*each));
        if (count > 0) output << each->name << ' ' << count << '\n';
        links += count;
    }
    output << "meta nodes " << metaNodes << ", meta links " << meta.links.Count()
           << ", enumerations " << meta.enumerations.Count() << '\n'
           << "nodes " << nodes << ", links " << links << '\n';
    for (const Store::Metamodel& each : repository->Metamodels()) {
        if (!each.ecore.empty())
            output << "metamodel " << each.uri << " from " << each.file << '\n';
    }
}

bool Check(const std::vector<std::string>& arguments, std::ostream& output) {
    QueryConnection reading(arguments[1]);
    const std::size_t faults =
        reading.Print("SELECT * FROM pragma_integrity_check WHERE integrity_check <> 'ok'",
                      output) +
        reading.Print("SELECT 'dangling reference', * FROM pragma_foreign_key_check", output);
    // What the tables say has to make sense, too.
    if (faults == 0) Store::Open(arguments[1]);
    output << (faults == 0 ? "no damage" : "damaged") << '\n';
    return faults == 0;
}

void Query(const std::vector<std::string>& arguments, std::ostream& output) {
    QueryConnection reading(arguments[1]);
    reading.Print(arguments[2], output);
}

}  // namespace

int Run(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors) {
    const std::string command = arguments.empty() ? std::string() : arguments[0];
    const std::size_t count = arguments.size();
    try {
        if (command == "--help" || command == "-h") {
            output << usage;
        } else if (command == "import" && count >= 3) {
            Import(arguments, output);
        } else if (command == "export" && count == 3) {
            Export(arguments, output);
        } else if (command == "info" && count == 2) {
            Info(arguments, output);
        } else if (command == "check" && count == 2) {
            return Check(arguments, output) ? 0 : 1;
        } else if (command == "query" && count == 3) {
            Query(arguments, output);
        } else {
            errors << usage;
            return 2;
        }
        return 0;
    } catch (const std::exception& error) {
        errors << "orvane-repository: " << error.what() << '\n';
        return 1;
    }
}

}  // namespace repository::tool
