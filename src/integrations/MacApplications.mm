// macOS only: finding applications by bundle identifier, reading their
// Info.plist, and the Ghostty service, through AppKit.

#include <QString>

#include <optional>

#import <AppKit/AppKit.h>

namespace tillery {

std::optional<QString> macApplicationWithBundleIdentifier(const QString &bundleIdentifier)
{
    @autoreleasepool {
        NSURL *url = [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:bundleIdentifier.toNSString()];
        if (url == nil)
            return std::nullopt;
        return QString::fromNSString(url.path);
    }
}

std::optional<QString> macBundleInfoString(const QString &bundlePath, const QString &key)
{
    @autoreleasepool {
        NSBundle *bundle = [NSBundle bundleWithPath:bundlePath.toNSString()];
        id value = [bundle objectForInfoDictionaryKey:key.toNSString()];
        if (![value isKindOfClass:[NSString class]])
            return std::nullopt;
        return QString::fromNSString(value);
    }
}

bool openGhosttyWindow(const QString &folder)
{
    @autoreleasepool {
        NSString *pasteboardName = [NSString stringWithFormat:@"%@.OpenInGhostty",
                                                              NSBundle.mainBundle.bundleIdentifier ?: @"app.tillery"];
        NSPasteboard *pasteboard = [NSPasteboard pasteboardWithName:pasteboardName];
        [pasteboard clearContents];
        NSURL *url = [NSURL fileURLWithPath:folder.toNSString() isDirectory:YES];
        if (![pasteboard writeObjects:@[url]])
            return false;
        if (!NSPerformService(@"New Ghostty Window Here", pasteboard))
            return false;
        NSArray<NSRunningApplication *> *running =
            [NSRunningApplication runningApplicationsWithBundleIdentifier:@"com.mitchellh.ghostty"];
        if (running.count > 0)
            [running.firstObject activateWithOptions:0];
        return true;
    }
}

} // namespace tillery
