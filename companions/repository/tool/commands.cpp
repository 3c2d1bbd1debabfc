#include "repository/tool/commands.h"

#include <sqlite3.h>

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
#include "repository/store/text.h"

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

/// What would let a query change something: a change of the settings that forbid it, another file.
int Authorize(void*, int action, const char* name, const char* value, const char*, const char*) {
    if (action == SQLITE_ATTACH || action == SQLITE_DETACH) return SQLITE_DENY;
    if (action != SQLITE_PRAGMA || value == nullptr) return SQLITE_OK;
    const std::string pragma = store::FoldCase(name);
    return pragma == "query_only" || pragma == "journal_mode" ? SQLITE_DENY : SQLITE_OK;
}

/// A connection to a repository file that changes nothing in it. It may write the file all the
/// same: what a program that was killed has left half done is taken back first.
class Reading {
public:
    explicit Reading(const std::string& path) {
        if (store::Probe(store::Absolute(path)) != store::FileState::repository) {
            throw store::Error(store::Number::fileNotFound,
                               "\"" + path + "\" is no repository file");
        }
        int result = sqlite3_open_v2(path.c_str(), &connection_, SQLITE_OPEN_READWRITE, nullptr);
        if (result == SQLITE_OK) result = Configure();
        if (result == SQLITE_OK) return;
        const std::string text = sqlite3_errstr(result);
        sqlite3_close(connection_);
        throw std::runtime_error(text);
    }
    ~Reading() { sqlite3_close(connection_); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    /// Prints the rows of a query, tabs between their columns; returns how many there are.
    std::size_t Print(const std::string& sql, std::ostream& output) {
        struct Printer {
            std::ostream& output;
            std::size_t count = 0;
        };
        Printer printer{output};
        const auto print = [](void* data, int columns, char** texts, char**) {
            auto& to = *static_cast<Printer*>(data);
            for (int i = 0; i < columns; ++i) {
                to.output << (i > 0 ? "\t" : "") << (texts[i] != nullptr ? texts[i] : "");
            }
            to.output << '\n';
            ++to.count;
            return 0;
        };
        if (sqlite3_exec(connection_, sql.c_str(), print, &printer, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(connection_));
        }
        return printer.count;
    }

private:
    int Configure() {
        sqlite3_busy_timeout(connection_, Store::defaultBusyTimeout);
        const int result =
            sqlite3_exec(connection_, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
        return result == SQLITE_OK ? sqlite3_set_authorizer(connection_, Authorize, nullptr)
                                   : result;
    }

    sqlite3* connection_ = nullptr;
};

bool Check(const std::vector<std::string>& arguments, std::ostream& output) {
    Reading reading(arguments[1]);
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
    Reading reading(arguments[1]);
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
