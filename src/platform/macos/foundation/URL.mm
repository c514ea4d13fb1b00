#include "platform/foundation/URL.h"

#include "platform/macos/foundation/Conversions.h"

namespace foundation {
namespace {

/// ASCII's control characters and U+0080 to U+009F; NSCharacterSet's own set has the joiners of many scripts as well.
NSCharacterSet* controlCharacters()
{
    NSMutableCharacterSet* set = [NSMutableCharacterSet characterSetWithRange:NSMakeRange(0, 0x20)];
    [set addCharactersInRange:NSMakeRange(0x7F, 0x21)];
    return set;
}

/// Blanks, and what else of ASCII stands for nothing in "user:password@host:port".
NSCharacterSet* strayCharacters()
{
    NSMutableCharacterSet* set = [NSMutableCharacterSet characterSetWithCharactersInString:@"\"<>\\^`{|}"];
    [set formUnionWithCharacterSet:NSCharacterSet.whitespaceCharacterSet];
    return set;
}

bool contains(NSString* text, NSCharacterSet* characters)
{
    return [text rangeOfCharacterFromSet:characters].location != NSNotFound;
}

/// What stands between the "//" behind the scheme and the path; nil where there is no "//".
NSString* authorityOf(NSString* text)
{
    const NSRange colon = [text rangeOfString:@":"];
    NSString* rest = colon.location == NSNotFound ? @"" : [text substringFromIndex:NSMaxRange(colon)];
    if (![rest hasPrefix:@"//"])
        return nil;
    rest = [rest substringFromIndex:2];
    NSCharacterSet* ends = [NSCharacterSet characterSetWithCharactersInString:@"/?#"];
    const NSRange end = [rest rangeOfCharacterFromSet:ends];
    return end.location == NSNotFound ? rest : [rest substringToIndex:end.location];
}

NSURLComponents* componentsOf(NSString* text)
{
    if (@available(macOS 14.0, *))
        return [NSURLComponents componentsWithString:text encodingInvalidCharacters:YES];
    // macOS 13 takes only clean text. Here a stray per cent sign makes the text no address.
    NSMutableCharacterSet* allowed = [NSCharacterSet.URLQueryAllowedCharacterSet mutableCopy];
    [allowed addCharactersInString:@"#%[]"];
    NSString* clean = [text stringByAddingPercentEncodingWithAllowedCharacters:allowed];
    return clean ? [NSURLComponents componentsWithString:clean] : nil;
}

} // namespace

std::optional<URL> URL::parse(std::string_view text)
{
    NSString* native = nativeTextOrNil(text);
    if (!native || contains(native, controlCharacters()))
        return std::nullopt;
    NSString* authority = authorityOf(native);
    if (authority && contains(authority, strayCharacters()))
        return std::nullopt;

    NSURL* url = componentsOf(native).URL;
    const bool needsHost = authority && !(authority.length == 0 && url.fileURL);
    if (url.scheme.length == 0 || (needsHost && url.host.length == 0) || url.port.integerValue > 65535)
        return std::nullopt;
    return urlFrom(url);
}

} // namespace foundation
