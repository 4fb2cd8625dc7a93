// Following references to other transform files.
#include "xml/xmlTransformResolver.h"

#include "support/ownPreferences.h"
#include "utils/locations.h"
#include "xml/documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

using namespace Color;
using namespace XmlTest;
using Tavrin::BASE_PATH_NONE;
using Tavrin::BASE_PATH_SHARED;
using Tavrin::BASE_PATH_VENDOR;
using Tavrin::RESOLVE_BROADCAST_MONITOR;
using Tavrin::RESOLVE_GRAPHICS_MONITOR;
using testing::EndsWith;
using testing::StartsWith;

namespace
{

// An element that refers to a path or, by these attributes, to something else.
std::string referenceBy(std::string const& attributes)
{
    return "<Reference inBitDepth='32f' outBitDepth='32f' " + attributes + "/>";
}

std::string referenceTo(std::string const& path)
{
    return referenceBy("path='" + path + "'");
}

class Resolver : public testing::Test
{
protected:
    Resolver()
    {
        std::filesystem::create_directory(m_folder.file("shared"));
        m_preferences.setSharedPath(m_folder.file("shared"));
    }

    // A file with these elements.
    std::string write(std::string const& name, std::string const& elements) const { return m_folder.write(name, inRoot(elements)); }
    void addAlias(std::string const& alias, std::string const& path, Tavrin::BasePath basePath = BASE_PATH_NONE)
    {
        m_preferences.getReferenceTable().addAlias(alias, {path, basePath});
    }
    Failure resolve(std::shared_ptr<Transform> const& transform, Tavrin::ResolveFlags flags = RESOLVE_GRAPHICS_MONITOR,
                    std::string const& file = "") const
    {
        return failureOf([&] { XMLTransformResolver(m_preferences).resolve(file, flags, transform); });
    }
    Failure resolveElements(std::string const& elements) const { return resolve(transformOf(inRoot(elements))); }
    std::string resolvePath(std::string const& attributes, std::string const& file = "") const
    {
        std::shared_ptr<Transform> const transform = transformOf(inRoot(referenceBy(attributes)));
        auto* const reference = static_cast<ReferenceOp*>(&transform->getOps().get(0));
        return XMLTransformResolver(m_preferences).resolvePath(reference, file, RESOLVE_GRAPHICS_MONITOR);
    }
    // How many operators are left when the references are replaced.
    static unsigned int flatSize(Transform const& transform)
    {
        return transform.clone(Transform::CloneType::Flat)->getOps().size();
    }

    ScopedEnvironment const m_noOverride{"TAVRIN_OVERRIDE_SHARED_PATH", ""};
    TemporaryFolder const m_folder;
    Preferences m_preferences;
};

Failure cycle(std::string const& path)
{
    return {0x440002, "Reference cycle detected: '" + path + "'"};
}

} // namespace

TEST_F(Resolver, LeavesATransformWithoutReferencesAsItIs)
{
    EXPECT_EQ(resolveElements(kIdentityRange), Failure());
}

TEST_F(Resolver, PutsTheOperatorsOfAFileInPlaceOfAReference)
{
    std::string const path = write("a.ctf", kIdentityRange + kIdentityRange);
    std::shared_ptr<Transform> const transform = transformOf(inRoot(kIdentityRange + referenceTo(path) + kIdentityRange));
    EXPECT_EQ(resolve(transform), Failure());
    EXPECT_FALSE(transform->hasUnresolvedReferences());
    EXPECT_EQ(flatSize(*transform), 4U);
}

TEST_F(Resolver, ReadsAFileAnewForEachReferenceToIt)
{
    std::string const d = write("d.ctf", kIdentityRange);
    std::string const b = write("b.ctf", referenceTo(d));
    std::string const c = write("c.ctf", referenceTo(d) + referenceTo(d));
    std::shared_ptr<Transform> const transform = transformOf(inRoot(referenceTo(b) + referenceTo(c)));
    EXPECT_EQ(resolve(transform), Failure());
    EXPECT_EQ(flatSize(*transform), 3U);

    write("d.ctf", kIdentityRange + kIdentityRange);
    transform->unresolve();
    EXPECT_EQ(resolve(transform), Failure());
    EXPECT_EQ(flatSize(*transform), 6U);
}

TEST_F(Resolver, RefusesAFileThatRefersToItself)
{
    std::string const path = write("a.ctf", referenceTo(m_folder.file("a.ctf")));
    EXPECT_EQ(resolve(transformOf(inRoot(referenceTo(path)))), cycle(path));
    EXPECT_EQ(resolve(transformOf(inRoot(referenceTo(path))), RESOLVE_GRAPHICS_MONITOR, path), cycle(path));
}

TEST_F(Resolver, RefusesACycleOfFiles)
{
    std::string const a = write("a.ctf", referenceTo(m_folder.file("b.ctf")));
    write("b.ctf", referenceTo(m_folder.file("c.ctf")));
    write("c.ctf", referenceTo(a));
    EXPECT_EQ(resolveElements(referenceTo(a)), cycle(a));
}

TEST_F(Resolver, RefusesACycleUnderAnotherName)
{
    std::filesystem::create_symlink("a.ctf", m_folder.file("link.ctf"));
    std::filesystem::create_directory_symlink(".", m_folder.file("here"));
    for (std::string const& name : {m_folder.file("link.ctf"), m_folder.file("here/a.ctf"), m_folder.file("./a.ctf")})
    {
        std::string const path = write("a.ctf", referenceTo(name));
        EXPECT_EQ(resolveElements(referenceTo(path)), cycle(name));
    }
}

TEST_F(Resolver, RefusesACycleThroughAnAlias)
{
    std::string const path = write("a.ctf", referenceBy("alias='me'"));
    addAlias("me", path);
    EXPECT_EQ(resolveElements(referenceBy("alias='me'")), cycle(path));
}

TEST_F(Resolver, BoundsTheDepthOfReferences)
{
    std::string path = write("0.ctf", kIdentityRange);
    for (int i = 1; i <= 64; ++i)
        path = write(std::to_string(i) + ".ctf", referenceTo(path));
    EXPECT_EQ(resolveElements(referenceTo(m_folder.file("63.ctf"))), Failure());
    EXPECT_EQ(resolveElements(referenceTo(path)), (Failure{0x440003, "Failed to load reference Reference: too many references"}));
}

TEST_F(Resolver, BoundsTheNumberOfReferences)
{
    std::string path = write("0.ctf", kIdentityRange);
    for (int i = 1; i <= 40; ++i)
        path = write(std::to_string(i) + ".ctf", referenceTo(path) + referenceTo(path));
    EXPECT_EQ(resolveElements(referenceTo(path)), (Failure{0x440003, "Failed to load reference Reference: too many references"}));
}

TEST_F(Resolver, TellsWhyAFileCannotBeLoaded)
{
    std::string const missing = m_folder.file("missing.ctf");
    EXPECT_EQ(resolveElements(referenceBy("name='Lost' path='" + missing + "'")),
              (Failure{0x440003, "Failed to load reference Lost: No file found: '" + missing + "'"}));
    EXPECT_EQ(resolveElements(referenceTo(m_folder.path().string())),
              (Failure{0x440003, "Failed to load reference Reference: Not a file: '" + m_folder.path().string() + "'"}));
}

TEST_F(Resolver, TellsAFailureDeepInAChainOnce)
{
    std::string const broken = m_folder.write("broken.ctf", "<ProcessList id='a'>");
    std::string const inner = write("inner.ctf", referenceBy("name='Inner' path='" + broken + "'"));
    Failure const failure = resolveElements(referenceBy("name='Outer' path='" + inner + "'"));
    EXPECT_EQ(failure.id, 0x440003U);
    EXPECT_THAT(failure.words, StartsWith("Failed to load reference Inner: "));
    EXPECT_THAT(failure.words, EndsWith(broken));
}

TEST_F(Resolver, KeepsWhatItResolvedBeforeAFailure)
{
    std::string const good = write("good.ctf", kIdentityRange);
    std::shared_ptr<Transform> const transform =
        transformOf(inRoot(referenceTo(good) + referenceTo(m_folder.file("missing.ctf")) + referenceTo(good)));
    EXPECT_NE(resolve(transform), Failure());
    EXPECT_FALSE(transform->getOps().get(0).needsResolving());
    EXPECT_TRUE(transform->getOps().get(1).needsResolving());
    EXPECT_TRUE(transform->getOps().get(2).needsResolving());
}

TEST_F(Resolver, NeedsABasePathForARelativePath)
{
    std::string const path = write("a.ctf", referenceTo("b.ctf"));
    write("b.ctf", kIdentityRange); // Beside it, which does not matter.
    Failure const missing{0x440001, "Reference missing Base Path attribute"};
    EXPECT_EQ(resolveElements(referenceTo(path)), missing);
    EXPECT_EQ(resolve(transformOf(inRoot(referenceTo("b.ctf"))), RESOLVE_GRAPHICS_MONITOR, path), missing);
    addAlias("b", "b.ctf");
    EXPECT_EQ(resolveElements(referenceBy("alias='b'")), missing);
}

TEST_F(Resolver, TakesAnAbsolutePathAsItIs)
{
    EXPECT_EQ(resolvePath("path='/a/b.ctf'"), "/a/b.ctf");
    EXPECT_EQ(resolvePath("path='/a/b.ctf' basePath='Shared'"), "/a/b.ctf");
    addAlias("b", "/a/b.ctf", BASE_PATH_VENDOR);
    EXPECT_EQ(resolvePath("alias='b'"), "/a/b.ctf");
}

TEST_F(Resolver, FindsSharedFilesInTheSharedFolder)
{
    EXPECT_EQ(resolvePath("path='looks/a.ctf' basePath='Shared'"), m_folder.file("shared/looks/a.ctf"));
    addAlias("b", "b.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(resolvePath("alias='b'"), m_folder.file("shared/b.ctf"));
    ScopedEnvironment const environment("TAVRIN_OVERRIDE_SHARED_PATH", "/site/");
    EXPECT_EQ(resolvePath("alias='b'"), "/site/b.ctf");
}

TEST_F(Resolver, RefusesUnknownAliasesAndNoReference)
{
    EXPECT_EQ(resolveElements(referenceBy("alias='nobody'")), (Failure{0x120001, "Alias 'nobody' not found."}));
    EXPECT_EQ(failureOf([&] { XMLTransformResolver(m_preferences).resolvePath(nullptr, "", RESOLVE_GRAPHICS_MONITOR); }),
              (Failure{0x440004, "Internal - Reference is null"}));
}

TEST_F(Resolver, TakesTheCurrentMonitorForTheOneOfTheFlags)
{
    addAlias("graphicsMonitor", write("graphics.ctf", kIdentityRange));
    addAlias("broadcastMonitor", write("broadcast.ctf", kIdentityRange + kIdentityRange));
    std::shared_ptr<Transform> const transform = transformOf(inRoot(referenceBy("name='Screen' alias='currentMonitor'")));
    EXPECT_EQ(resolve(transform, RESOLVE_GRAPHICS_MONITOR), Failure());
    EXPECT_EQ(flatSize(*transform), 1U);
    transform->unresolve();
    EXPECT_EQ(resolve(transform, RESOLVE_BROADCAST_MONITOR), Failure());
    EXPECT_EQ(flatSize(*transform), 2U);
    transform->unresolve();
    EXPECT_EQ(resolve(transform, 2), (Failure{0x280003, "Reference 'Screen' not an alias"}));
}

TEST_F(Resolver, GivesTheEndsTheDepthsOfTheReference)
{
    std::string const path = write("a.ctf", kIdentityRange);
    std::shared_ptr<Transform> const transform =
        transformOf(inRoot("<Reference inBitDepth='16f' outBitDepth='10i' path='" + path + "'/>"));
    EXPECT_EQ(resolve(transform), Failure());
    std::shared_ptr<Transform> const flat = transform->clone(Transform::CloneType::Flat);
    EXPECT_EQ(flat->getInputBitDepth(), Tavrin::BIT_DEPTH_16f);
    EXPECT_EQ(flat->getOutputBitDepth(), Tavrin::BIT_DEPTH_10i);
}

namespace
{

class ResolverOfBypasses : public Resolver
{
protected:
    // The operators that a reference with these attributes and children resolves to: a range, and one within a further file.
    OpList const& resolvedOps(std::string const& attributes, std::string const& children)
    {
        std::string const inner = write("inner.ctf", kIdentityRange);
        std::string const outer = write("outer.ctf", kIdentityRange + referenceTo(inner));
        m_transform = transformOf(inRoot("<Reference inBitDepth='32f' outBitDepth='32f' path='" + outer + "' " + attributes + ">" +
                                         children + "</Reference>"));
        EXPECT_EQ(resolve(m_transform), Failure());
        return static_cast<ReferenceOp const&>(m_transform->getOps().get(0)).getResolvedOps();
    }
    static Op const& innermost(OpList const& ops) { return static_cast<ReferenceOp const&>(ops.get(1)).getResolvedOps().get(0); }

    std::shared_ptr<Transform> m_transform;
};

} // namespace

TEST_F(ResolverOfBypasses, LeavesOperatorsAloneWithoutABypass)
{
    OpList const& ops = resolvedOps("", "");
    for (Op const* const op : {&ops.get(0), &ops.get(1), &innermost(ops)})
    {
        EXPECT_FALSE(op->getBypass()->getValue());
        EXPECT_FALSE(op->getBypass()->isDynamic());
    }
}

TEST_F(ResolverOfBypasses, BypassesAllOperatorsOfABypassedReference)
{
    OpList const& ops = resolvedOps("bypass='true'", "");
    for (Op const* const op : {&ops.get(0), &ops.get(1), &innermost(ops)})
    {
        EXPECT_TRUE(op->getBypass()->getValue());
        EXPECT_FALSE(op->getBypass()->isDynamic());
    }
}

TEST_F(ResolverOfBypasses, SharesASwitchThatCanBeSetWhileRendering)
{
    for (std::string const value : {"true", "false"})
    {
        OpList const& ops = resolvedOps(value == "true" ? "bypass='true'" : "", "<DynamicParameter param='LOOK_SWITCH'/>");
        std::shared_ptr<BypassDynamicProperty> const& bypass = m_transform->getOps().get(0).getBypass();
        EXPECT_TRUE(bypass->isDynamic());
        EXPECT_EQ(bypass->getValue(), value == "true");
        for (Op const* const op : {&ops.get(0), &ops.get(1), &innermost(ops)})
            EXPECT_EQ(op->getBypass(), bypass);
    }
}

namespace
{

class ResolverOfInstallations : public OwnPreferencesTest
{
protected:
    void SetUp() override
    {
        OwnPreferencesTest::SetUp();
        Utils::getSystemPath(); // Now the system's transforms are known.
    }
    static std::string siblingOf(std::string const& file)
    {
        ReferenceOp reference;
        reference.setPath("misc/a.ctf", BASE_PATH_VENDOR);
        return XMLTransformResolver(Preferences()).resolvePath(&reference, file, RESOLVE_GRAPHICS_MONITOR);
    }
};

} // namespace

TEST_F(ResolverOfInstallations, FindsSiblingsInTheInstallationOfTheFile)
{
    EXPECT_EQ(siblingOf("/x/Norvane/Halvard/Tavrin/2014.1/transforms/display/b.ctf"),
              "/x/Norvane/Halvard/Tavrin/2014.1/transforms/misc/a.ctf");
    EXPECT_EQ(siblingOf("/Norvane/Halvard/Tavrin/2016/more/transforms/transforms/b.ctf"),
              "/Norvane/Halvard/Tavrin/2016/more/transforms/misc/a.ctf");
}

TEST_F(ResolverOfInstallations, FindsFilesOfTheSystemForAllOthers)
{
    for (char const* const file : {"", "/b.ctf", "/x/Norvane/Halvard/Tavrin/Shared/transforms/b.ctf",
                                   "/x/Norvane/Halvard/Tavrin/2014.1/b.ctf", "/transforms/Norvane/Halvard/Tavrin/2014.1/b.ctf"})
        EXPECT_EQ(siblingOf(file), systemTransforms() + "/misc/a.ctf");
}

TEST_F(ResolverOfInstallations, FollowsReferencesToFilesOfAnotherInstallation)
{
    // Two files that were saved with the paths of an installation that is gone.
    std::string const gone = "/gone/Norvane/Halvard/Tavrin/2014.1/transforms/";
    m_folder.write("system/transforms/a.ctf", inRoot(referenceTo(gone + "b.ctf")));
    m_folder.write("system/transforms/b.ctf", inRoot(kIdentityRange));
    std::shared_ptr<Transform> const transform = transformOf(inRoot(referenceTo(gone + "a.ctf")));
    Preferences const preferences;
    EXPECT_EQ(failureOf([&] { XMLTransformResolver(preferences).resolve("", RESOLVE_GRAPHICS_MONITOR, transform); }), Failure());
    m_folder.write("system/transforms/b.ctf", inRoot(referenceTo(gone + "a.ctf")));
    transform->unresolve();
    EXPECT_EQ(failureOf([&] { XMLTransformResolver(preferences).resolve("", RESOLVE_GRAPHICS_MONITOR, transform); }),
              cycle(gone + "a.ctf"));
}
