# The installation's data folder (CTQ_Path): the files of data/, its
# subfolders included, are copied into the build tree's data folder, beside
# the geoid raster.
file(GLOB_RECURSE ZV_DATA_FILES CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/data ${PROJECT_SOURCE_DIR}/data/*)
set(ZV_DATA_OUTPUTS "")
foreach(name ${ZV_DATA_FILES})
  set(file ${PROJECT_SOURCE_DIR}/data/${name})
  set(output ${CMAKE_BINARY_DIR}/data/${name})
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${file} ${output}
    DEPENDS ${file}
    COMMENT "Data file ${name}")
  list(APPEND ZV_DATA_OUTPUTS ${output})
endforeach()
add_custom_target(zv_data_folder ALL DEPENDS ${ZV_DATA_OUTPUTS})
