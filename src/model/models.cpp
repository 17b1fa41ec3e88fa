#include "models.h"

namespace velmor {

void recognizeModel(ModuleRecord& record, int modelCode)
{
    if (modelCode < 0 || modelCode >= kModelCount)
        return;
    const ModelInfo& model = kModels[modelCode];
    record.modelName = fixedText(QStringView(model.name));
    record.channelCount = static_cast<qint16>(model.channels);
}

}  // namespace velmor
