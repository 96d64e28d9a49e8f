#include <qqml.h>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>

#include "qml/lists/Catalogue.h"
#include "qml/lists/ChoiceModel.h"
#include "qml/lists/SetupModel.h"
#include "qml/lists/ToastModel.h"
#include "qml/maps/MapView.h"
#include "qml/maps/RasterMap.h"
#include "qml/maps/mapPictures.h"
#include "qml/texts/LevelEntry.h"
#include "qml/texts/LevelText.h"
#include "qml/texts/RangeHint.h"
#include "qml/texts/RfUnits.h"
#include "qml/traces/MarkerModel.h"
#include "qml/traces/RecordingSource.h"
#include "qml/traces/TraceModel.h"
#include "qml/views/FrequencyZoom.h"
#include "qml/views/SpectrumItem.h"
#include "qml/views/TraceView.h"
#include "qml/views/WaterfallView.h"

using namespace rfu::qml;

/// Registers the types of the module RfUtils.
class RfUtilsPlugin : public QQmlExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char* uri) override {
        constexpr int kMajor = 1;
        constexpr int kMinor = 0;
        // What Qt Quick added to items since its first version is there for the views too.
        constexpr int kItemRevision = 11;
        qmlRegisterRevision<QQuickItem, kItemRevision>(uri, kMajor, kMinor);
        // The engine owns the object.
        qmlRegisterSingletonType<RfUnits>(
            uri, kMajor, kMinor, "RfUnits",
            [](QQmlEngine*, QJSEngine*) -> QObject* { return new RfUnits; });
        qmlRegisterType<Catalogue>(uri, kMajor, kMinor, "Catalogue");
        qmlRegisterType<ChoiceModel>(uri, kMajor, kMinor, "ChoiceModel");
        qmlRegisterType<FrequencyZoom>(uri, kMajor, kMinor, "FrequencyZoom");
        qmlRegisterType<LevelEntry>(uri, kMajor, kMinor, "LevelEntry");
        qmlRegisterType<LevelText>(uri, kMajor, kMinor, "LevelText");
        qmlRegisterType<MapView>(uri, kMajor, kMinor, "MapView");
        qmlRegisterType<MarkerModel>(uri, kMajor, kMinor, "MarkerModel");
        qmlRegisterType<RangeHint>(uri, kMajor, kMinor, "RangeHint");
        qmlRegisterType<RasterMap>(uri, kMajor, kMinor, "RasterMap");
        qmlRegisterType<RecordingSource>(uri, kMajor, kMinor, "RecordingSource");
        qmlRegisterType<SetupModel>(uri, kMajor, kMinor, "SetupModel");
        qmlRegisterUncreatableType<SpectrumItem>(
            uri, kMajor, kMinor, "SpectrumItem",
            QStringLiteral("SpectrumItem is what TraceView and WaterfallView have in common"));
        qmlRegisterType<ToastModel>(uri, kMajor, kMinor, "ToastModel");
        qmlRegisterType<TraceModel>(uri, kMajor, kMinor, "TraceModel");
        qmlRegisterType<TraceView>(uri, kMajor, kMinor, "TraceView");
        qmlRegisterType<WaterfallView>(uri, kMajor, kMinor, "WaterfallView");
    }

    void initializeEngine(QQmlEngine* engine, const char*) override {
        const QString name = QLatin1String(MapPictures::kProvider);
        if (engine->imageProvider(name) == nullptr) {
            engine->addImageProvider(name, new MapPictures);  // owned by the engine
        }
    }
};

#include "plugin.moc"
