# Debian's OpenCV CMake package comes only with the full libopencv-dev, which
# drags in every module; this finds just core, imgproc and photo (inpainting).
find_path(OpenCVCore_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
find_path(OpenCVCore_CONFIG_DIR opencv2/cvconfig.h PATH_SUFFIXES opencv4
          PATHS /usr/include/${CMAKE_LIBRARY_ARCHITECTURE})
find_library(OpenCVCore_CORE_LIBRARY opencv_core)
find_library(OpenCVCore_IMGPROC_LIBRARY opencv_imgproc)
find_library(OpenCVCore_PHOTO_LIBRARY opencv_photo)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVCore REQUIRED_VARS
  OpenCVCore_INCLUDE_DIR OpenCVCore_CONFIG_DIR OpenCVCore_CORE_LIBRARY OpenCVCore_IMGPROC_LIBRARY
  OpenCVCore_PHOTO_LIBRARY)

if(OpenCVCore_FOUND AND NOT TARGET OpenCV::core)
  add_library(OpenCV::core UNKNOWN IMPORTED)
  set_target_properties(OpenCV::core PROPERTIES
    IMPORTED_LOCATION ${OpenCVCore_CORE_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES "${OpenCVCore_INCLUDE_DIR};${OpenCVCore_CONFIG_DIR}")
  add_library(OpenCV::imgproc UNKNOWN IMPORTED)
  set_target_properties(OpenCV::imgproc PROPERTIES
    IMPORTED_LOCATION ${OpenCVCore_IMGPROC_LIBRARY}
    INTERFACE_LINK_LIBRARIES OpenCV::core)
  add_library(OpenCV::photo UNKNOWN IMPORTED)
  set_target_properties(OpenCV::photo PROPERTIES
    IMPORTED_LOCATION ${OpenCVCore_PHOTO_LIBRARY}
    INTERFACE_LINK_LIBRARIES OpenCV::imgproc)
endif()
