// Uses the installed package from outside the source tree and shows the foundation at work:
// an image, transforms and shapes, a record with graphics, and an archive round trip.
#include <cmath>
#include <cstdio>
#include <sstream>

#include <Vision/DeepLearning/DeepLearning.h>
#include <Vision/Foundation.h>

namespace {

using namespace Tavrin::Vision;
using Tavrin::Brnt::CreateObject;

std::shared_ptr<Image8Grey> MakeGradient() {
    auto image = CreateObject<Image8Grey>(64, 48);
    auto memory = image->GetPixelMemory(ImageDataModeConstants_Write, 0, 0, 64, 48);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            memory->FirstPel()[y * memory->Step() + x] = static_cast<unsigned char>(x * 4);
    std::printf("image: %dx%d grey, row step %d bytes\n", image->Width(), image->Height(),
                memory->Step());
    return image;
}

std::shared_ptr<RectangleAffine> ShowShapes() {
    auto rectangle = CreateObject<RectangleAffine>();
    rectangle->SetOriginLengthsRotationSkew(10, 10, 20, 10, M_PI / 6, 0);
    auto rotate = CreateObject<Transform2DLinear>();
    rotate->SetMatrixElementsTranslation(0, -1, 1, 0, 5, 0);
    auto mapped = rectangle->MapLinear(*rotate, CopyShapeConstants_All);
    std::printf("rectangle: opposite corner (%.3f, %.3f), after a quarter turn (%.3f, %.3f)\n",
                rectangle->CornerOppositeX(), rectangle->CornerOppositeY(),
                mapped->CornerOppositeX(), mapped->CornerOppositeY());
    auto ellipse = CreateObject<Ellipse>();
    ellipse->SetCenterXYRadiusXYRotation(0, 0, 4, 1, 0);
    auto shear = CreateObject<Transform2DLinear>();
    shear->SetMatrixElementsTranslation(1, 1, 0, 1, 0, 0);
    auto sheared = ellipse->MapLinear(*shear, CopyShapeConstants_GeometryOnly);
    std::printf("ellipse: radii 4 and 1 sheared become %.3f and %.3f\n", sheared->RadiusX(),
                sheared->RadiusY());
    return mapped;
}

std::shared_ptr<Record> MakeRecord(std::shared_ptr<Image8Grey> const& image,
                                   std::shared_ptr<RectangleAffine> const& region) {
    auto graphics = CreateObject<GraphicCollection>();
    region->setColor(Color32(0xFF00FF00));
    graphics->Add(region);
    auto label = CreateObject<GraphicLabel>();
    label->SetXYText(12, 8, "region");
    graphics->Add(label);
    auto root = CreateObject<Record>("InputImage", rttr::type::get<std::shared_ptr<IImage>>(),
                                     RecordUsageConstants_Image, false,
                                     rttr::variant(std::static_pointer_cast<IImage>(image)), "");
    auto overlay = CreateObject<Record>("Graphics", rttr::type::get<GraphicCollectionPtr>(),
                                        RecordUsageConstants_Overlay, false,
                                        rttr::variant(graphics), "two graphics");
    root->SubRecords()->Add(overlay);
    std::printf("record: %s with %d sub-record holding %d graphics\n", root->Key().c_str(),
                root->SubRecords()->Count(), graphics->Count());
    return root;
}

void ShowArchiveRoundTrip(std::shared_ptr<Image8Grey> const& image) {
    std::shared_ptr<IImage> original = image;
    std::stringstream stream;
    {
        VisionBinaryOutputArchive out(stream, SerializerOptionsConstants_None);
        out(original, original);
    }
    std::shared_ptr<IImage> first, second;
    VisionBinaryInputArchive in(stream, SerializerOptionsConstants_None);
    in(first, second);
    auto loaded = std::dynamic_pointer_cast<Image8Grey>(first);
    auto pels = loaded->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, 64, 48);
    std::printf("archive: %zu bytes, one image for two pointers: %s, pel (63, 0) = %d\n",
                stream.str().size(), first == second ? "yes" : "no", pels->FirstPel()[63]);
}

} // namespace

int main() {
    auto image = MakeGradient();
    auto region = ShowShapes();
    MakeRecord(image, region);
    ShowArchiveRoundTrip(image);
    return 0;
}
