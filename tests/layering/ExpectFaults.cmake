# Runs the layering check on a small tree of planted faults (fixture/) and passes when it
# fails with exactly the faults of fixture/expected.txt: each rule, broken once, is caught.
cmake_minimum_required(VERSION 3.25)
set(FIXTURE ${CMAKE_CURRENT_LIST_DIR}/fixture)
set(layers ${WORK}/fixture-layers.txt)
configure_file(${FIXTURE}/layers.txt.in ${layers} @ONLY)
execute_process(
    COMMAND ${CMAKE_COMMAND} -DLAYERS=${layers} -DROOT=${FIXTURE} -DGENERATED=${FIXTURE}/generated
            -P ${CMAKE_CURRENT_LIST_DIR}/CheckLayering.cmake
    RESULT_VARIABLE result ERROR_VARIABLE printed)
if(result EQUAL 0)
    message(FATAL_ERROR "The check passed a tree of planted faults")
endif()
string(REGEX MATCHALL "[^\n]+" lines "${printed}")
list(FILTER lines EXCLUDE REGEX "^CMake Error|^  |^Call Stack|^$")
list(SORT lines)
file(STRINGS ${FIXTURE}/expected.txt expected)
list(SORT expected)
if(NOT lines STREQUAL expected)
    list(JOIN lines "\n  " found)
    list(JOIN expected "\n  " wanted)
    message(FATAL_ERROR "The check found:\n  ${found}\nbut the planted faults are:\n  ${wanted}")
endif()
