#include "viewer/ViewerFixture.h"

#include "annotate/GradeArithmetic.h"

namespace daylark {
namespace {

class ViewerGradeTest : public ViewerFixture {
protected:
    ViewerGrade& grade = controller.grade();
};

TEST_F(ViewerGradeTest, ValuesReachThePictureAtOnceAndResetsTouchTheirOwn) {
    showFrames(12);
    const auto movie = controller.currentMovie();
    QSignalSpy looks(&grade, &ViewerGrade::transformChanged);
    grade.setValue(ViewerGrade::gamma, 2);
    grade.setValue(ViewerGrade::red, 0.5);
    EXPECT_EQ(looks.count(), 2);
    EXPECT_EQ(grade.transform(), colourTransformOf(movie->grade()));
    EXPECT_EQ(movie->gamma, 2);
    EXPECT_FALSE(movie->gradeIcon.isNil());
    grade.setGrade({{}, ViewerGrade::gamma});
    EXPECT_EQ(movie->gamma, 1);
    EXPECT_EQ(movie->redChannel, 0.5);
    grade.setGrade({{}, 12});
    EXPECT_EQ(movie->redChannel, 0.5);
    grade.toggleGrade();
    EXPECT_TRUE(grade.transform() == ColourTransform{});
    EXPECT_EQ(movie->redChannel, 0.5);
    grade.toggleGrade();
    EXPECT_FALSE(grade.transform() == ColourTransform{});
    grade.setGrade({{}, ViewerGrade::resetAll});
    EXPECT_TRUE(grade.transform() == ColourTransform{});
    EXPECT_TRUE(movie->grade().isNeutral());
    EXPECT_TRUE(movie->gradeIcon.isNil());
}

TEST_F(ViewerGradeTest, PastingSwitchesAGradeOnAndApplyingToAllDoesNot) {
    const QString path = bench::movie({.frames = 12});
    show({record(path), record(path), record(path)});
    const auto movies = controller.list().movies();
    movies[0]->setGrade({.exposure = 0.3, .saturation = 1.7});
    const auto send = [this](const char* title, const std::vector<std::shared_ptr<Movie>>& selected) {
        grade.copyAndPasteGradeValues({QLatin1String(title)}, selected);
    };
    send("Copy", {movies[0], movies[1]});
    movies[1]->setGrade({.contrast = 1.2});
    movies[2]->setGrade({.contrast = 1.2});
    for (const size_t at : {1, 2})
        edits.refresh(movies[at], [](Movie& movie) { movie.applyGrade = false; });
    send("Paste", {movies[1]});
    EXPECT_TRUE(movies[1]->applyGrade);
    EXPECT_EQ(movies[1]->exposure, double(0.3f)); // narrowed on the way
    EXPECT_EQ(movies[1]->contrast, 1);
    grade.applyGradeToAllMovies();
    EXPECT_FALSE(movies[2]->applyGrade);
    EXPECT_EQ(movies[2]->saturation, double(1.7f));
    EXPECT_EQ(movies[0]->saturation, double(1.7f));
    EXPECT_EQ(grade.transform(), colourTransformOf(movies[0]->grade()));
    controller.transport().displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(grade.transform(), colourTransformOf(movies[1]->grade()));
}

} // namespace
} // namespace daylark
