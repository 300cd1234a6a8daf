#!/bin/sh
# leaks.sh GST_LAUNCH: streams that change their format and size, and GStreamer's tracer of leaks, which must name no object.
set -eu
streams=
for round in 1 2 3; do
    for caps in video/x-bayer,format=rggb,width=322,height=240 video/x-bayer,format=bggr,width=64,height=48 \
        video/x-raw,format=YUY2,width=321,height=240 video/x-raw,format=GRAY8,width=320,height=241; do
        streams="$streams videotestsrc num-buffers=50 ! $caps,framerate=30/1 ! all."
    done
done
# shellcheck disable=SC2086  # words of a pipeline
log=$(GST_TRACERS=leaks GST_DEBUG=GST_TRACER:7,2 GST_DEBUG_NO_COLOR=1 "$1" -q concat name=all ! kyconvert "gains=<1.5,1.0,1.2>" ! \
    video/x-raw,format=I420 ! fakesink $streams 2>&1) || { echo "$log"; exit 1; }
case $log in *'new format string: object-alive'*) ;; *) echo "no tracer of leaks"; exit 1 ;; esac
if echo "$log" | grep -E 'object-alive, |ERROR' | grep -v 'new format string'; then exit 1; fi
