# The world geoid raster of the installation's data folder: EGM96 as Debian's
# proj-data ships it, rewritten by GDAL as "GeoidSeparation.tif" into the
# build tree's data folder (the folder the CLI takes for its data beside bin).
# No ".aux.xml" beside it: the no-data value lives in the TIFF itself.
find_program(ZV_GDAL_TRANSLATE gdal_translate REQUIRED)
set(ZV_EGM96_GRID /usr/share/proj/egm96_15.gtx CACHE FILEPATH "EGM96 geoid grid (proj-data)")
set(ZV_GEOID_RASTER ${CMAKE_BINARY_DIR}/data/GeoidSeparation.tif)

add_custom_command(
  OUTPUT ${ZV_GEOID_RASTER}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/data
  COMMAND ${ZV_GDAL_TRANSLATE} -q -of GTiff -co COMPRESS=DEFLATE -co TILED=YES
          --config GDAL_PAM_ENABLED NO ${ZV_EGM96_GRID} ${ZV_GEOID_RASTER}.tmp.tif
  COMMAND ${CMAKE_COMMAND} -E rename ${ZV_GEOID_RASTER}.tmp.tif ${ZV_GEOID_RASTER}
  DEPENDS ${ZV_EGM96_GRID}
  COMMENT "Writing the geoid raster GeoidSeparation.tif"
  VERBATIM)
add_custom_target(zv_geoid_raster ALL DEPENDS ${ZV_GEOID_RASTER})
