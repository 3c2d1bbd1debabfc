# orvane_sqlite: SQLite as a static library, from the amalgamation (sqlite3.c and sqlite3.h) that
# script/bootstrap fetched, or from the folder in ORVANE_SQLITE_DIR.
block()
set(sqlite ${ORVANE_SQLITE_DIR})
if(NOT sqlite)
  # Not kept as a default value: another version or another cache folder has to be seen.
  set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    script/lib/sqlite.sh)
  file(STRINGS ${CMAKE_SOURCE_DIR}/script/lib/sqlite.sh version REGEX "^sqlite_version=")
  string(REPLACE "sqlite_version=" "" version "${version}")
  set(cache "$ENV{XDG_CACHE_HOME}")
  if(NOT cache)
    set(cache "$ENV{HOME}/.cache")
  endif()
  set(sqlite "${cache}/orvane-controls/sqlite-${version}")
endif()
if(NOT EXISTS ${sqlite}/sqlite3.c)
  message(FATAL_ERROR "${sqlite}/sqlite3.c is missing: run script/bootstrap")
endif()

add_library(orvane_sqlite STATIC ${sqlite}/sqlite3.c)
target_include_directories(orvane_sqlite SYSTEM PUBLIC ${sqlite})
target_compile_definitions(orvane_sqlite PRIVATE
  SQLITE_ENABLE_FTS5 SQLITE_THREADSAFE=1 SQLITE_DEFAULT_FOREIGN_KEYS=1 SQLITE_OMIT_LOAD_EXTENSION)
target_compile_options(orvane_sqlite PRIVATE -w -O2)
if(NOT WIN32)
  find_package(Threads REQUIRED)
  target_link_libraries(orvane_sqlite PUBLIC Threads::Threads m)
endif()
endblock()
