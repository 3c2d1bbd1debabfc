# orvane_sqlite: SQLite as a static library, from the amalgamation (sqlite3.c and sqlite3.h).
block()
orvane_sources(sqlite sqlite)
add_library(orvane_sqlite STATIC ${sqlite}/sqlite3.c)
target_include_directories(orvane_sqlite SYSTEM PUBLIC ${sqlite})
target_compile_definitions(orvane_sqlite PRIVATE
  SQLITE_ENABLE_FTS5 SQLITE_ENABLE_SESSION SQLITE_ENABLE_PREUPDATE_HOOK SQLITE_THREADSAFE=1 SQLITE_DEFAULT_FOREIGN_KEYS=1 SQLITE_OMIT_LOAD_EXTENSION)
target_compile_options(orvane_sqlite PRIVATE -w -O2)
if(NOT WIN32)
  find_package(Threads REQUIRED)
  target_link_libraries(orvane_sqlite PUBLIC Threads::Threads m)
endif()
endblock()
