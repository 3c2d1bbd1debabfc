# orvane_expat: the XML parser Expat as a static library.
block()
orvane_sources(expat expat)
set(config ${CMAKE_BINARY_DIR}/expat)
if(NOT WIN32)
  set(getrandom "#define HAVE_GETRANDOM 1")
endif()
file(CONFIGURE OUTPUT ${config}/expat_config.h CONTENT [[
#define BYTEORDER 1234
#define XML_NS 1
#define XML_CONTEXT_BYTES 1024
${getrandom}
]])
add_library(orvane_expat STATIC ${expat}/xmlparse.c ${expat}/xmlrole.c ${expat}/xmltok.c)
target_include_directories(orvane_expat SYSTEM PUBLIC ${expat} PRIVATE ${config})
# The protection against entity bombs is part of the code for document types, XML_DTD.
target_compile_definitions(orvane_expat PUBLIC XML_STATIC XML_DTD)
target_compile_options(orvane_expat PRIVATE -w -O2)
endblock()
