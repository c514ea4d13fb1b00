#include "app/AppDelegate.h"

int main(int argc, char** argv)
{
    auto& application = appkit::Application::sharedApplication();
    const auto delegate = std::make_shared<perchly::AppDelegate>();
    application.setDelegate(delegate);
    return application.run(argc, argv);
}
