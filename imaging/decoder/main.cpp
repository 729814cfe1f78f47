// SPDX-License-Identifier: GPL-3.0-or-later

// Decodes images for the application, one at a time, so that a damaged or malicious file crashes this process
// and not the application. Does nothing when started by hand.
#include "imaging/decoder/DecoderLoop.h"
#include "platform/PipedProcess.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    platform::ParentChannel application;
    const QCoreApplication qt(argc, argv); // loads the image format plug-ins
    decoder::serve(application, decoder::decodeFile);
    return 0;
}
