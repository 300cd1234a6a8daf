#ifndef PLUGINS_GSTREAMER_KYCONVERT_H
#define PLUGINS_GSTREAMER_KYCONVERT_H

#include <gst/gst.h>

/// The element kyconvert.
GType ky_convert_get_type();

#endif
