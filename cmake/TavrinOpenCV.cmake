# Debian ships OpenCV's modules without a CMake package unless every module is installed, so the
# modules used are found one by one. Makes an interface target that brings the headers and the
# libraries of the modules named.
function(tavrin_opencv_target target)
    find_path(TAVRIN_OPENCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${TAVRIN_OPENCV_INCLUDE_DIR})
    foreach(module ${ARGN})
        find_library(TAVRIN_OPENCV_${module} opencv_${module} REQUIRED)
        target_link_libraries(${target} INTERFACE ${TAVRIN_OPENCV_${module}})
    endforeach()
endfunction()
