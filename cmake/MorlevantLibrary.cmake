# morlevant_library(<name> SOURCES ... PUBLIC_HEADERS ... LINKS [PUBLIC ...] [PRIVATE ...])
#
# A layer's static library, morlevant_<name>, and its alias Morlevant::<name>. PUBLIC_HEADERS
# are its interface, the headers other layers may include (written from the repository root,
# "engine/TaskRunner.h"); the folder's other headers are its own. LINKS go to
# target_link_libraries as written: PUBLIC for what the public headers need, PRIVATE for what
# only the sources use, so that a layer's own dependencies do not leak into the layers that
# link it. The layering test (tests/layering) must list the target at its layer.
function(morlevant_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC_HEADERS;LINKS" ${ARGN})
    add_library(morlevant_${name} STATIC ${ARG_SOURCES})
    add_library(Morlevant::${name} ALIAS morlevant_${name})
    target_sources(morlevant_${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}
        FILES ${ARG_PUBLIC_HEADERS})
    target_link_libraries(morlevant_${name} ${ARG_LINKS})
    set_property(GLOBAL APPEND PROPERTY MORLEVANT_LIBRARIES morlevant_${name})
endfunction()
