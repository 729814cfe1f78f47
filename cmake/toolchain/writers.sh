# Stage "writers": the plugins for AVIF and HEIF, JPEG XL and TIFF of stage "formats" with other settings of their
# writers; they are deployed in place of those. Sourced by tools/toolchain with $prefix (where it is installed) and
# $work (a scratch folder) set; stage "qt" is complete, and stage "codecs" is built when it is not there.
# Result: plugins/imageformats/*.dll, to be deployed.
. "$root/cmake/toolchain/formats.sh"

writers_stage() {
  provide codecs
  step "writers: plugins (1 minute)" plugins_build writers qheif qjxl qtiff
}
