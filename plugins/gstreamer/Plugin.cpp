#include <plugins/gstreamer/KyConvert.h>

#include <KyImgLib/KyImgLibC.h>

namespace {

gboolean Initialize(GstPlugin* plugin) {
    if (KyExtendedTypes_Register() != KY_STATUS_SUCCESS) return FALSE;
    return gst_element_register(plugin, "kyconvert", GST_RANK_NONE, ky_convert_get_type());
}

}  // namespace

#define PACKAGE "KyImgLib"
GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, kyimglib, "Pixel formats of machine-vision cameras", Initialize,
                  KYIMGLIB_VERSION, "BSD", "KyImgLib", "https://kyimglib.invalid")
