# orvane_sqlite: SQLite as a static library, from the amalgamation that script/bootstrap fetched.
set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS script/lib/sqlite.sh)
file(STRINGS ${CMAKE_SOURCE_DIR}/script/lib/sqlite.sh version REGEX "^sqlite_version=")
string(REPLACE "sqlite_version=" "" version "${version}")
if(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(cache "$ENV{XDG_CACHE_HOME}")
else()
  set(cache "$ENV{HOME}/.cache")
endif()
set(ORVANE_SQLITE_DIR "${cache}/orvane-controls/sqlite-${version}" CACHE PATH
  "The folder of SQLite's amalgamation (sqlite3.c and sqlite3.h)")
if(NOT EXISTS ${ORVANE_SQLITE_DIR}/sqlite3.c)
  message(FATAL_ERROR "${ORVANE_SQLITE_DIR}/sqlite3.c is missing: run script/bootstrap")
endif()

add_library(orvane_sqlite STATIC ${ORVANE_SQLITE_DIR}/sqlite3.c)
target_include_directories(orvane_sqlite SYSTEM PUBLIC ${ORVANE_SQLITE_DIR})
target_compile_definitions(orvane_sqlite PRIVATE
  SQLITE_ENABLE_FTS5 SQLITE_THREADSAFE=1 SQLITE_DEFAULT_FOREIGN_KEYS=1 SQLITE_OMIT_LOAD_EXTENSION)
target_compile_options(orvane_sqlite PRIVATE -w -O2)
if(NOT WIN32)
  find_package(Threads REQUIRED)
  target_link_libraries(orvane_sqlite PUBLIC Threads::Threads m)
endif()
