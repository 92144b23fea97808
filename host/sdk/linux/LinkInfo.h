// What the outside world says about the links that can be counted, and what
// the backend tells its host about recording. Shared by the sampler, the
// NetworkManager watcher that feeds it and the programs that show its state.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace velt {

struct LinkInfo
{
    QString interfaceName;
    QString connection; // NetworkManager's connection id; empty when unknown
    bool metered = false; // the active connection is metered (yes or guess-yes)
};

// The current classification of the links. Called on the sampler's thread:
// must be thread-safe and cheap (answer from a cached copy).
using LinkInfoFn = std::function<QList<LinkInfo>()>;

// Recorder: the background recorder, which always wants to write the ledger
// and waits for it. Auto: the application, which writes only while no
// recorder does and reads the recorder's ledger otherwise.
enum class RecordingRole { Auto, Recorder };

struct RecordingStatus
{
    bool recording = false; // this process writes the ledger
    bool recorderRunning = false; // a recorder process writes it
    bool fallbackInterface = false; // no metered link seen yet: the default route's is counted
    QStringList counted; // the interfaces counted now
    QString problem; // why the ledger cannot be used as it should; empty when fine
};

} // namespace velt
