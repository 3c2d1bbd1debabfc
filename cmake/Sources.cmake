# orvane_sources(NAME RESULT): the folder of another project's sources that script/bootstrap fetched;
# script/lib/NAME.sh says which version. ORVANE_<NAME>_DIR names another folder.
function(orvane_sources name result)
  string(TOUPPER ${name} upper)
  set(folder ${ORVANE_${upper}_DIR})
  if(NOT folder)
    # Not kept as a default value: another version or another cache folder has to be seen.
    set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
      script/lib/${name}.sh)
    file(STRINGS ${CMAKE_SOURCE_DIR}/script/lib/${name}.sh version REGEX "^${name}_version=")
    string(REPLACE "${name}_version=" "" version "${version}")
    set(cache "$ENV{XDG_CACHE_HOME}")
    if(NOT cache)
      set(cache "$ENV{HOME}/.cache")
    endif()
    set(folder "${cache}/orvane-controls/${name}-${version}")
  endif()
  if(NOT EXISTS ${folder})
    message(FATAL_ERROR "${folder} is missing: run script/bootstrap")
  endif()
  set(${result} ${folder} PARENT_SCOPE)
endfunction()
