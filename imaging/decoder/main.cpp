// SPDX-License-Identifier: GPL-3.0-or-later

// Decodes pictures for the application, one at a time, so that a damaged or hostile file ends this process
// and not the other. Does nothing when it is started by hand.
#include "imaging/decoder/DecoderLoop.h"
#include "platform/PipedProcess.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    platform::ParentChannel application;
    const QCoreApplication qt(argc, argv); // finds the image formats
    decoder::serve(application, decoder::decodeFile);
    return 0;
}
