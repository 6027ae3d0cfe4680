// Uses the installed package from outside the source tree and shows the foundation at work.
#include <cstdio>
#include <sstream>

#include <Vision/DeepLearning/DeepLearning.h>
#include <Vision/Foundation.h>

namespace {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Transform2DLinear;

void ShowTransforms() {
    auto rotate = CreateObject<Transform2DLinear>();
    rotate->SetMatrixElementsTranslation(0, -1, 1, 0, 0, 0);
    auto shift = CreateObject<Transform2DLinear>();
    shift->SetMatrixElementsTranslation(1, 0, 0, 1, 10, 0);
    double x = 0, y = 0;
    rotate->Compose(*shift)->MapPoint(1, 2, &x, &y);
    std::printf("transform: rotate after shift maps (1, 2) to (%g, %g)\n", x, y);
}

void ShowArchiveRoundTrip() {
    auto original = CreateObject<Transform2DLinear>();
    original->SetMatrixElementsTranslation(2, 0, 0, 3, 4, 5);
    std::stringstream stream;
    {
        Tavrin::Vision::VisionBinaryOutputArchive out(stream, {});
        out(original);
    }
    std::shared_ptr<Transform2DLinear> loaded;
    Tavrin::Vision::VisionBinaryInputArchive in(stream, {});
    in(loaded);
    std::printf("archive: %zu bytes, loaded transform scales x by %g and moves y by %g\n",
                stream.str().size(), loaded->A(), loaded->TY());
}

} // namespace

int main() {
    ShowTransforms();
    ShowArchiveRoundTrip();
    return 0;
}
